// What the walk asks of a system: the names in an open directory, and the facts of a name.
#pragma once

#include "Walk.h"

#include <memory>
#include <sys/types.h>

namespace vellmoor::walk {

/// A name as the reader found it.
struct RawEntry {
    std::string_view name; ///< valid until the next batch; NUL-terminated
    EntryType type = EntryType::Other;
    bool complete = false;      ///< type and facts are known; otherwise ask DirectoryReader::complete
    bool hidden = false;        ///< in the system's sense
    bool bundleMark = false;    ///< macOS: the Finder's bundle bit, if the reader was told to ask for it
    bool isPlaceholder = false; ///< macOS: a directory whose content lies in a cloud only; opened, it would be fetched
    std::int64_t allocatedBytes = 0;
    std::int64_t modifiedNs = 0;
};

/// One per worker and used for one directory after the other, so that its buffer is made once.
class DirectoryReader {
public:
    explicit DirectoryReader(bool bundleMarks);
    ~DirectoryReader();
    DirectoryReader(const DirectoryReader&) = delete;
    DirectoryReader& operator=(const DirectoryReader&) = delete;

    /// Forgets all batches; to be called before another directory.
    void clear();
    /// Reads the next batch from the directory in place of those before; false at the end. An error is the end, too.
    bool replace(int fd);
    /// The same, but keeps the batches before; entries are read again from the first.
    bool append(int fd);
    /// The next entry of what has been read ("." and ".." are none); false after the last.
    bool next(RawEntry& entry);
    /// Starts again with the first entry that is held.
    void rewind() { position_ = 0; }
    /// Whether entries of the directory are missing although some could be read: the disk failed on the way, or the
    /// system's answer makes no sense. A directory that was deleted meanwhile has ended in order.
    [[nodiscard]] bool isBroken() const { return isBroken_; }
    /// Reads the facts that are missing; false when the entry has vanished, cannot be read, or is a directory on
    /// another device than `device`. Does not follow links and mounts nothing. Only then is `hidden` certain.
    static bool complete(int fd, dev_t device, RawEntry& entry);

private:
    bool read(int fd);

    std::unique_ptr<char[]> buffer_;
    std::size_t capacity_ = 0;
    std::size_t filled_ = 0;
    std::size_t position_ = 0;
    [[maybe_unused]] bool bundleMarks_; ///< macOS only
    bool hasRead_ = false;              ///< something of this directory
    bool isBroken_ = false;
};

} // namespace vellmoor::walk
