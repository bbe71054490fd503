// Facts and small changes of single paths on macOS, in plain POSIX: members of MacPlatform. None of them makes the
// system fetch a file or folder whose content lies in a cloud only: such a call fails instead.
#include "MacPlatform.h"
#include "ThreadPolicy.h"
#include "disk/Descriptor.h"
#include "disk/MacPaths.h"
#include "disk/PosixFiles.h"
#include "macos/AttributeRecord.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <span>
#include <sys/attr.h>
#include <sys/mount.h>
#include <sys/param.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vellmoor {
namespace {

Descriptor openFolder(const Path& folder) {
    return Descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC));
}

// Halves of files, which macOS keeps on disks of other systems; nobody is ever shown them.
bool isListed(std::string_view name) {
    return !name.starts_with("._");
}

// The facts of an entry whose record does not hold them. One that cannot be asked is shown, as Finder would show it.
FolderEntry askedEntry(int folder, const walk::AttributeRecord& record) {
    FolderEntry entry;
    entry.name = record.name;
    entry.isHidden = entry.name.starts_with('.');
    struct stat status{};
    if (::fstatat(folder, entry.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0) {
        entry.isDirectory = S_ISDIR(status.st_mode);
        entry.isRegularFile = S_ISREG(status.st_mode);
        entry.isSymlink = S_ISLNK(status.st_mode);
        entry.isHidden = entry.isHidden || (status.st_flags & UF_HIDDEN) != 0;
    }
    return entry;
}

FolderEntry entryOf(int folder, const walk::AttributeRecord& record) {
    if (!record.hasFacts) {
        return askedEntry(folder, record);
    }
    FolderEntry entry;
    entry.name = record.name;
    entry.isDirectory = record.type == walk::AttributeRecord::directory;
    entry.isRegularFile = record.type == walk::AttributeRecord::regularFile;
    entry.isSymlink = record.type == walk::AttributeRecord::symbolicLink;
    entry.isHidden = entry.name.starts_with('.') || (record.flags & UF_HIDDEN) != 0;
    return entry;
}

/// Adds what one answer of getattrlistbulk holds; false when a part of it makes no sense, so that names are missing.
bool addEntries(int folder, std::span<const char> buffer, int count, std::vector<FolderEntry>& found) {
    const walk::RecordsExtent extent = walk::extentOf(buffer, count);
    bool isWhole = extent.isWhole;
    for (std::span<const char> records = buffer.first(extent.bytes); !records.empty();) {
        const auto record = walk::takeRecord(records);
        isWhole = isWhole && record.has_value();
        if (record && isListed(record->name)) {
            found.push_back(entryOf(folder, *record));
        }
    }
    return isWhole;
}

/// The answer of getattrlist to a question for Finder's information: its own length, then that.
struct FinderInformation {
    std::uint32_t length;
    std::array<unsigned char, 32> bytes;
};
static_assert(sizeof(FinderInformation) == 36);

/// Whether Finder marked a folder as a package of its own.
bool hasBundleMark(const Path& folder) {
    // Of Finder's flags, which are two bytes, high one first.
    constexpr std::size_t flagsOffset = 8;
    constexpr unsigned char hasBundleInHighByte = 0x20;
    attrlist wanted{};
    wanted.bitmapcount = ATTR_BIT_MAP_COUNT;
    wanted.commonattr = ATTR_CMN_FNDRINFO;
    FinderInformation found{};
    return ::getattrlist(folder.c_str(), &wanted, &found, sizeof found, FSOPT_NOFOLLOW) == 0 &&
           found.length == sizeof found && (found.bytes[flagsOffset] & hasBundleInHighByte) != 0;
}

// The data volume's folders have two names; everybody uses the one without this.
std::string_view withoutDataVolume(std::string_view path) {
    constexpr std::string_view dataVolume = "/System/Volumes/Data";
    const bool isBelow = path.starts_with(dataVolume) && path.substr(dataVolume.size()).starts_with('/');
    return isBelow ? path.substr(dataVolume.size()) : path;
}

} // namespace

std::optional<FileFacts> MacPlatform::facts(const Path& path) const {
    const walk::ThreadPolicy nothingIsFetched;
    struct stat status{};
    if (::lstat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    FileFacts facts;
    facts.isDirectory = S_ISDIR(status.st_mode);
    facts.isRegularFile = S_ISREG(status.st_mode);
    facts.isSymlink = S_ISLNK(status.st_mode);
    facts.isSticky = (status.st_mode & S_ISVTX) != 0;
    facts.allocatedBytes = std::int64_t{status.st_blocks} * 512;
    facts.length = status.st_size;
    facts.modified = files::timePoint(status.st_mtimespec);
    facts.owner = status.st_uid;
    facts.mode = status.st_mode & 07777U;
    facts.device = static_cast<std::uint64_t>(status.st_dev);
    facts.inode = status.st_ino;
    return facts;
}

// A dangling link does not exist, nor does anything in a folder that privacy protection closes.
bool MacPlatform::exists(const Path& path) const {
    const walk::ThreadPolicy nothingIsFetched;
    struct stat status{};
    return ::stat(path.c_str(), &status) == 0;
}

// A folder is opened to find out, since privacy protection answers there and nowhere else.
bool MacPlatform::isReadable(const Path& path) const {
    const walk::ThreadPolicy nothingIsFetched;
    struct stat status{};
    if (::stat(path.c_str(), &status) != 0 || !files::hasRights(path, R_OK)) {
        return false;
    }
    return !S_ISDIR(status.st_mode) || bool(openFolder(path));
}

bool MacPlatform::isExecutable(const Path& path) const {
    const walk::ThreadPolicy nothingIsFetched;
    return files::isExecutable(path);
}

// Names together with their facts, as the walk reads them: no entry costs a call of its own.
std::expected<std::vector<FolderEntry>, std::string> MacPlatform::entries(const Path& folder) const {
    constexpr std::size_t batchSize = std::size_t{64} * 1024;
    const walk::ThreadPolicy nothingIsFetched;
    const Descriptor descriptor = openFolder(folder);
    if (!descriptor) {
        return std::unexpected(files::reason(errno));
    }
    std::vector<FolderEntry> found;
    const auto buffer = std::make_unique_for_overwrite<char[]>(batchSize); // a worker's stack is small
    attrlist wanted = walk::wantedAttributes(false);
    for (;;) {
        const int count = ::getattrlistbulk(descriptor.get(), &wanted, buffer.get(), batchSize, 0);
        if (count == 0) {
            return found;
        }
        if (count < 0 && errno != EINTR) {
            return std::unexpected(files::reason(errno));
        }
        if (count > 0 && !addEntries(descriptor.get(), {buffer.get(), batchSize}, count, found)) {
            return std::unexpected(files::reason(EIO));
        }
    }
}

std::optional<std::string> MacPlatform::fileContents(const Path& path, std::size_t limit) const {
    const walk::ThreadPolicy nothingIsFetched;
    return files::contents(path, limit);
}

std::optional<std::string> MacPlatform::fileStart(const Path& path, std::size_t count) const {
    const walk::ThreadPolicy nothingIsFetched;
    return files::start(path, count);
}

std::optional<Path> MacPlatform::linkTarget(const Path& path) const {
    const walk::ThreadPolicy nothingIsFetched;
    return files::linkTarget(path);
}

Path MacPlatform::standardized(const Path& path) const {
    return mac::standardized(path);
}

std::optional<Path> MacPlatform::realPath(const Path& path) const {
    return mac::realPath(path);
}

bool MacPlatform::isMountedAt(const Path& place) const {
    const walk::ThreadPolicy nothingIsFetched;
    struct stat itself{};
    if (::lstat(place.c_str(), &itself) != 0 || S_ISLNK(itself.st_mode)) {
        return false;
    }
    struct statfs mounted{};
    if (::statfs(place.c_str(), &mounted) != 0) {
        return true; // the system does not tell: not to be moved
    }
    return withoutDataVolume(mounted.f_mntonname) == withoutDataVolume(place.native());
}

bool MacPlatform::isPackage(const Path& folder) const {
    const walk::ThreadPolicy nothingIsFetched;
    return hasBundleMark(folder) || packages_.contain(folder);
}

Outcome MacPlatform::createFile(const Path& path, std::string_view contents) const {
    return files::createFile(path, contents);
}

Outcome MacPlatform::createLink(const Path& path, const Path& target) const {
    return files::createLink(path, target);
}

Outcome MacPlatform::removeFile(const Path& path) const {
    return files::removeFile(path);
}

} // namespace vellmoor
