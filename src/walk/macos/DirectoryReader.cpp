// Reading a directory on macOS. getattrlistbulk tells names together with their facts, so that an entry costs no
// call of its own; only where it leaves something open - a file system that does not know an attribute, an entry
// whose facts could not be read - the facts are asked for by name.
#include "DirectoryReader.h"

#include "AttributeRecord.h"
#include "Nanoseconds.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vellmoor::walk {
namespace {

// On the heap, as a thread has a small stack; larger ones spare few calls.
constexpr std::size_t batchSize = std::size_t{64} * 1024;
// A buffer that grew beyond this for one large directory is given back.
constexpr std::size_t keptSize = 16 * batchSize;

EntryType typeOf(fsobj_type_t type) {
    switch (type) {
    case AttributeRecord::regularFile:
        return EntryType::File;
    case AttributeRecord::directory:
        return EntryType::Directory;
    case AttributeRecord::symbolicLink:
        return EntryType::Symlink;
    default:
        return EntryType::Other;
    }
}

EntryType typeOfMode(mode_t mode) {
    return S_ISREG(mode)   ? EntryType::File
           : S_ISDIR(mode) ? EntryType::Directory
           : S_ISLNK(mode) ? EntryType::Symlink
                           : EntryType::Other;
}

void setFlags(std::uint32_t flags, RawEntry& entry) {
    entry.hidden = entry.name.starts_with('.') || (flags & UF_HIDDEN) != 0;
    entry.isPlaceholder = entry.type == EntryType::Directory && (flags & SF_DATALESS) != 0;
}

// Halves of files, which macOS keeps on disks of other systems; nobody is ever shown them.
bool isAppleDouble(std::string_view name) {
    return name.starts_with("._");
}

// Something is mounted there, or would be if one asked.
bool leadsElsewhere(const AttributeRecord& record) {
    return (record.mountStatus & (DIR_MNTSTATUS_MNTPOINT | DIR_MNTSTATUS_TRIGGER)) != 0;
}

RawEntry entryFrom(const AttributeRecord& record) {
    RawEntry entry{.name = record.name, .complete = record.hasFacts, .bundleMark = record.bundleMark};
    entry.type = typeOf(record.type);
    setFlags(record.flags, entry);
    if (entry.type == EntryType::File) {
        entry.allocatedBytes = record.allocatedBytes;
        entry.modifiedNs = record.modifiedNs;
    }
    return entry;
}

} // namespace

DirectoryReader::DirectoryReader(bool bundleMarks) : bundleMarks_(bundleMarks) {}
DirectoryReader::~DirectoryReader() = default;

void DirectoryReader::clear() {
    if (capacity_ > keptSize) {
        buffer_.reset();
        capacity_ = 0;
    }
    filled_ = position_ = 0;
    hasRead_ = isBroken_ = false;
}

bool DirectoryReader::replace(int fd) {
    filled_ = position_ = 0;
    return read(fd);
}

bool DirectoryReader::append(int fd) {
    position_ = 0;
    return read(fd);
}

bool DirectoryReader::read(int fd) {
    if (capacity_ - filled_ < batchSize / 2) { // a record is below 1 KiB; half a buffer is worth a call
        const std::size_t larger = std::max(batchSize, capacity_ * 2);
        auto buffer = std::make_unique_for_overwrite<char[]>(larger);
        std::copy_n(buffer_.get(), filled_, buffer.get());
        buffer_ = std::move(buffer);
        capacity_ = larger;
    }
    const std::span<char> free(buffer_.get() + filled_, std::min(capacity_ - filled_, batchSize));
    attrlist wanted = wantedAttributes(bundleMarks_);
    int count = 0;
    do {
        count = ::getattrlistbulk(fd, &wanted, free.data(), free.size(), 0);
    } while (count < 0 && errno == EINTR);
    if (count <= 0) {
        isBroken_ = isBroken_ || (count < 0 && hasRead_ && errno != ENOENT);
        return false;
    }
    const RecordsExtent extent = extentOf(free, count);
    filled_ += extent.bytes;
    hasRead_ = true;
    isBroken_ = isBroken_ || !extent.isWhole;
    return true;
}

bool DirectoryReader::next(RawEntry& entry) {
    while (position_ < filled_) {
        std::span<const char> records(buffer_.get() + position_, filled_ - position_);
        const auto record = takeRecord(records);
        position_ = filled_ - records.size();
        if (!record) {
            isBroken_ = true;
        } else if (!isAppleDouble(record->name) && !leadsElsewhere(*record)) {
            entry = entryFrom(*record);
            return true;
        }
    }
    return false;
}

bool DirectoryReader::complete(int fd, dev_t device, RawEntry& entry) {
    struct stat facts{};
    if (::fstatat(fd, entry.name.data(), &facts, AT_SYMLINK_NOFOLLOW) != 0) {
        return false;
    }
    entry.type = typeOfMode(facts.st_mode);
    entry.complete = true;
    setFlags(facts.st_flags, entry);
    if (entry.type == EntryType::Directory) {
        return facts.st_dev == device;
    }
    if (entry.type == EntryType::File) {
        entry.allocatedBytes = std::int64_t{facts.st_blocks} * 512;
        entry.modifiedNs = nanoseconds(facts.st_mtimespec);
    }
    return true;
}

} // namespace vellmoor::walk
