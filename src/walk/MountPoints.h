#pragma once

#include <expected>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor::walk {

/// The paths of the mount points that the text of /proc/self/mountinfo names, in its order (see
/// proc_pid_mountinfo(5)).
std::vector<std::string> mountPlaces(std::string_view mountinfo);

/// The mount points below a folder, as a tree of names: a node stands for a folder on the way to one, a leaf for
/// the mount point itself. A walk carries the node of the folder it is in, so that no path is ever built.
class MountPoints {
public:
    /// Those below `root`, as the system tells now; null when there is none. The error is that the process has
    /// no file descriptor left; where the system tells nothing at all, the answer is null.
    static std::expected<std::unique_ptr<const MountPoints>, std::errc> below(const std::filesystem::path& root);
    /// Those of `places`, absolute paths of mount points, that lie below `realRoot`, a path without links.
    static std::unique_ptr<const MountPoints> among(const std::vector<std::string>& places, std::string_view realRoot);
    /// The same from the text of /proc/self/mountinfo (see proc_pid_mountinfo(5)).
    static std::unique_ptr<const MountPoints> parse(std::string_view mountinfo, std::string_view realRoot);

    /// The node for the name in this folder; null when nothing is mounted there or below.
    [[nodiscard]] const MountPoints* find(std::string_view name) const;
    [[nodiscard]] bool isMountPoint() const { return mounted_; }

private:
    void add(std::string_view relative);

    std::map<std::string, MountPoints, std::less<>> children_;
    bool mounted_ = false;
};

} // namespace vellmoor::walk
