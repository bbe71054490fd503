#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vellmoor {

/// How tight memory is.
enum class MemoryPressure : std::uint8_t { good, high, critical };

/// Memory figures in bytes.
struct MemorySnapshot {
    std::int64_t totalBytes = 0;
    std::int64_t freeBytes = 0; ///< what programs can still get; on Linux it holds the file caches
    std::int64_t activeBytes = 0;
    std::int64_t wiredBytes = 0;
    std::int64_t compressedBytes = 0;
    std::int64_t cachedBytes = 0;
    std::int64_t reclaimableBytes = 0;
    std::int64_t unusedBytes = 0; ///< the part of freeBytes that holds nothing at all

    bool operator==(const MemorySnapshot&) const = default;

    /// 0 to 100; 0 when the total is unknown.
    [[nodiscard]] int usagePercent() const;
    /// `good` when the total is unknown.
    [[nodiscard]] MemoryPressure pressure() const;
    /// Localised: "Good", "High" or "Critical".
    [[nodiscard]] std::string pressureTitle() const;
    /// Total minus free, never negative.
    [[nodiscard]] std::int64_t usedBytes() const;
    /// The part of freeBytes that holds file caches, which are given back when programs need memory; never negative.
    [[nodiscard]] std::int64_t fileCacheBytes() const;
};

/// One running application with its processes grouped.
struct MemoryApp {
    std::string id;
    std::string name;
    std::optional<std::string> bundleIdentifier;
    std::optional<std::string> path;
    std::int64_t bytes = 0; ///< summed resident memory
    std::int64_t processCount = 0;
    std::vector<std::int32_t> pids;
    bool isActive = false;
    /// When each of `pids` began, in the kernel's ticks since boot: tells a number that was used again. 0 where the
    /// system tells none (macOS).
    std::vector<std::uint64_t> starts;

    /// Whether `now`, a later record, is this very application: not another one in its row, and not started anew.
    [[nodiscard]] bool isStill(const MemoryApp& now) const;
    /// With those processes only that `now` has as well.
    [[nodiscard]] MemoryApp withProcessesOf(const MemoryApp& now) const;
};

} // namespace vellmoor
