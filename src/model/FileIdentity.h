#pragma once

#include <chrono>
#include <cstdint>

namespace vellmoor {

enum class FileKind : std::uint8_t { File, Folder, Link, Other };

/// By what a file is known again: a name may lead to another one by the time it is acted on.
struct FileIdentity {
    std::uint64_t device = 0; ///< a number for the disk, good for as long as the program runs
    std::uint64_t inode = 0;
    FileKind kind = FileKind::Other;
    std::int64_t length = 0; ///< bytes of the content
    std::chrono::system_clock::time_point modified;

    bool operator==(const FileIdentity&) const = default;
};

/// How much of an identity has to agree.
enum class Sameness : std::uint8_t {
    /// Disk and kind, for a log that grows or a cache that is replaced while nobody asks.
    Kind,
    /// Disk, file and kind, whatever it holds by now.
    File,
    /// Disk, file and kind; of a plain file also length and modification time.
    Content,
};

/// Whether `found` still is what was shown as `shown`.
[[nodiscard]] bool isSame(const FileIdentity& shown, const FileIdentity& found, Sameness wanted);

} // namespace vellmoor
