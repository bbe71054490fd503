#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace vellmoor {

/// The device that holds `path`, read from the text of /proc/self/mountinfo (proc(5)): the mount whose folder is
/// the longest one above the path. Nothing for file systems without a device.
std::optional<std::filesystem::path> deviceOf(const std::filesystem::path& path, std::string_view mountInfo);

/// The label of `device`: the name of the link in `labels` (/dev/disk/by-label) that leads to it, with udev's
/// \xHH escapes undone. Nothing when it has none.
std::optional<std::string> labelOf(const std::filesystem::path& device, const std::filesystem::path& labels);

/// The label of the volume that holds `path` on the system whose /proc and /dev lie below `root`.
std::optional<std::string> volumeLabelOf(const std::filesystem::path& path, const std::filesystem::path& root);

} // namespace vellmoor
