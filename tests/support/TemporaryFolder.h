#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string_view>

namespace vellmoor::test {

/// A new, empty folder in the system's temporary folder, deleted with everything in it at the end of its life:
/// also folders without permissions, trees deeper than PATH_MAX, names of any bytes. Links are never followed.
/// The path has no links in it. Relative arguments are below the folder; missing parents are made.
/// Every failure throws std::system_error, except in the destructor, which prints it.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] std::filesystem::path operator/(const std::filesystem::path& relative) const {
        return path_ / relative;
    }

    // Each of these answers the absolute path of what it made. An existing file is replaced.

    /// A file whose blocks are really allocated; its contents are not zeroes only when it is at most 1 MiB.
    std::filesystem::path file(const std::filesystem::path& relative, std::int64_t bytes = 0) const;
    /// A file with these contents.
    std::filesystem::path text(const std::filesystem::path& relative, std::string_view contents) const;
    /// A file of this length with no block allocated.
    std::filesystem::path sparse(const std::filesystem::path& relative, std::int64_t length) const;
    std::filesystem::path folder(const std::filesystem::path& relative) const;
    /// A symbolic link with `target` as its text.
    std::filesystem::path link(const std::filesystem::path& target, const std::filesystem::path& relative) const;
    /// A second name for the file `existing`.
    std::filesystem::path hardLink(const std::filesystem::path& existing, const std::filesystem::path& relative) const;
    std::filesystem::path fifo(const std::filesystem::path& relative) const;

    /// Sets the modification time of `relative` itself (not of a link's target).
    void setModified(const std::filesystem::path& relative, std::chrono::system_clock::time_point time) const;
    void setMode(const std::filesystem::path& relative, unsigned mode) const;

private:
    std::filesystem::path path_;
};

/// st_blocks * 512 of `path` itself.
std::int64_t allocatedBytes(const std::filesystem::path& path);

/// Whether the file system of `folder` takes that name for a file: APFS, for one, refuses bytes that are no UTF-8. It
/// is asked by making such a file, which is removed again.
bool takesName(const std::filesystem::path& folder, std::string_view name);

} // namespace vellmoor::test
