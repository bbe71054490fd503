#pragma once

#include "found/CleanupItem.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor {

enum class LargeFileKindFilter : std::uint8_t { all, installers, archives, videos, images, documents, other };

inline constexpr std::array allLargeFileKinds{LargeFileKindFilter::all,      LargeFileKindFilter::installers,
                                              LargeFileKindFilter::archives, LargeFileKindFilter::videos,
                                              LargeFileKindFilter::images,   LargeFileKindFilter::documents,
                                              LargeFileKindFilter::other};

enum class LargeFileAgeFilter : std::uint8_t { all, sevenDays, thirtyDays, ninetyDays };

inline constexpr std::array allLargeFileAges{LargeFileAgeFilter::all, LargeFileAgeFilter::sevenDays,
                                             LargeFileAgeFilter::thirtyDays, LargeFileAgeFilter::ninetyDays};

/// The lower-case extensions of each kind.
struct FileKinds {
    std::vector<std::string_view> installers;
    std::vector<std::string_view> archives;
    std::vector<std::string_view> videos;
    std::vector<std::string_view> images;
    std::vector<std::string_view> documents;

    /// The lists that every system has.
    static const FileKinds& common();
    /// Those, and the kinds of files that only Linux desktops use.
    static const FileKinds& linuxDesktop();
};

std::string_view rawValue(LargeFileKindFilter filter);
std::string_view rawValue(LargeFileAgeFilter filter);
/// Localised.
std::string title(LargeFileKindFilter filter);
/// Localised.
std::string title(LargeFileAgeFilter filter);

/// The kind that a file's last extension puts it in; `other` when no list holds it. Never `all`.
LargeFileKindFilter fileKind(const std::filesystem::path& path, const FileKinds& kinds);
bool matches(LargeFileKindFilter filter, const CleanupTarget& target, const FileKinds& kinds);
/// Whether the target was last modified strictly before `now` minus the filter's days; a target without a date
/// matches `all` only.
bool matches(LargeFileAgeFilter filter, const CleanupTarget& target, TimePoint now);

/// The last extension of `path`'s last component in lower case (ASCII), without the dot; empty when there is none.
std::string lowerExtension(const std::filesystem::path& path);

} // namespace vellmoor
