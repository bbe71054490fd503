// What SampleData.h is made of.
#pragma once

#include "found/ScanSnapshot.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace vellmoor::sample {

constexpr std::int64_t megabyte = 1'000'000;
constexpr std::int64_t gigabyte = 1'000 * megabyte;

TimePoint daysAgo(int days);

struct Look {
    std::string title;
    std::string description;
    std::string symbol;
    Tint tint = Tint::gray;
    CleanupRisk risk = CleanupRisk::safe;
};

CleanupTarget target(const std::filesystem::path& url, std::int64_t bytes, std::int64_t files, std::string symbol,
                     bool selected);
/// A category of these paths; its sums are theirs.
CleanupItem row(CleanerModule module, const Look& look, std::vector<CleanupTarget> targets, bool cleanable = true);

MemorySnapshot memoryState();

/// What a scan of `module` lists; for Smart Scan everything.
std::vector<CleanupItem> itemsOf(CleanerModule module);

} // namespace vellmoor::sample
