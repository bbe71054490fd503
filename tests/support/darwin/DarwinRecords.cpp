// getattrlistbulk and getattrlist: records of entries, packed as the kernel packs them.
#include "DarwinAbi.h"
#include "DarwinState.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <span>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace vellmoor::test::darwin {
namespace {

// What the kernel writes, as its public headers declare it; where one of these does not hold, the tests over this
// stand-in show nothing of a Mac.
static_assert(sizeof(attribute_set_t) == 20 && sizeof(attrreference_t) == 8 && sizeof(timespec) == 16);

std::string pathOf(int fd) {
    std::array<char, PATH_MAX> path{};
    const ssize_t length = ::readlink(("/proc/self/fd/" + std::to_string(fd)).c_str(), path.data(), path.size());
    return length > 0 ? std::string(path.data(), static_cast<std::size_t>(length)) : std::string();
}

/// A record in the making: values in the order of their bits, each padded to 4 bytes, the name behind them.
class Packer {
public:
    explicit Packer(const attrlist& wanted) : wanted_(wanted) { bytes_.resize(sizeof(std::uint32_t) + sizeof held_); }

    template <typename Value>
    void add(attrgroup_t attrlist::* group, attrgroup_t attribute_set_t::* heldGroup, attrgroup_t bit,
             const Value& value) {
        const bool isWithheld = (traits().withheld.*heldGroup & bit) != 0;
        if ((wanted_.*group & bit) == 0 || isWithheld) {
            return;
        }
        held_.*heldGroup |= bit;
        append(&value, sizeof value);
    }
    template <typename Value>
    void addCommon(attrgroup_t bit, const Value& value) {
        add(&attrlist::commonattr, &attribute_set_t::commonattr, bit, value);
    }
    void reserveName() {
        reference_ = bytes_.size();
        addCommon(ATTR_CMN_NAME, attrreference_t{});
    }
    std::string finish(const std::string& name) {
        if ((held_.commonattr & ATTR_CMN_NAME) != 0) {
            const attrreference_t reference{static_cast<std::int32_t>(bytes_.size() - reference_),
                                            static_cast<std::uint32_t>(name.size() + 1)};
            bytes_.replace(reference_, sizeof reference, reinterpret_cast<const char*>(&reference), sizeof reference);
            append(name.c_str(), name.size() + 1);
        }
        bytes_.append(traits().padding, 'x');
        const auto length = static_cast<std::uint32_t>(bytes_.size());
        held_.commonattr |= ATTR_CMN_RETURNED_ATTRS;
        bytes_.replace(0, sizeof length, reinterpret_cast<const char*>(&length), sizeof length);
        bytes_.replace(sizeof length, sizeof held_, reinterpret_cast<const char*>(&held_), sizeof held_);
        return bytes_;
    }

private:
    void append(const void* data, std::size_t size) {
        bytes_.append(static_cast<const char*>(data), size);
        bytes_.append((4 - size % 4) % 4, '\0');
    }

    const attrlist& wanted_;
    attribute_set_t held_{};
    std::string bytes_;
    std::size_t reference_ = 0;
};

// The kernel's vnode types.
std::uint32_t typeOf(mode_t mode) {
    switch (mode & S_IFMT) {
    case S_IFREG:
        return 1;
    case S_IFDIR:
        return 2;
    case S_IFBLK:
        return 3;
    case S_IFCHR:
        return 4;
    case S_IFLNK:
        return 5;
    case S_IFSOCK:
        return 6;
    default:
        return 7;
    }
}

// Empty when the entry has vanished.
std::string record(int fd, const std::string& name, const attrlist& wanted) {
    struct stat facts{};
    int error = valueOr(traits().entryErrors, name, 0);
    if (::fstatat(fd, name.c_str(), &facts, AT_SYMLINK_NOFOLLOW) != 0) {
        if (errno == ENOENT) {
            return {};
        }
        error = errno;
    }
    Packer packer(wanted);
    if (error != 0) {
        packer.addCommon(ATTR_CMN_ERROR, static_cast<std::uint32_t>(error));
        packer.reserveName();
        return packer.finish(name);
    }
    packer.reserveName();
    const std::uint32_t type = typeOf(facts.st_mode);
    packer.addCommon(ATTR_CMN_OBJTYPE, type);
    packer.addCommon(ATTR_CMN_MODTIME, facts.st_mtim);
    std::array<unsigned char, 32> finderInfo{};
    finderInfo[8] = traits().bundles.contains(name) ? 0x20 : 0;
    packer.addCommon(ATTR_CMN_FNDRINFO, finderInfo);
    packer.addCommon(ATTR_CMN_FLAGS, valueOr(traits().flags, name, 0U));
    if (S_ISDIR(facts.st_mode)) {
        packer.add(&attrlist::dirattr, &attribute_set_t::dirattr, ATTR_DIR_MOUNTSTATUS,
                   valueOr(traits().mountStatus, name, 0U));
    } else {
        const std::int64_t allocated = std::int64_t{facts.st_blocks} * 512;
        packer.add(&attrlist::fileattr, &attribute_set_t::fileattr, ATTR_FILE_ALLOCSIZE, allocated);
        packer.add(&attrlist::fileattr, &attribute_set_t::fileattr, ATTR_FILE_DATAALLOCSIZE, allocated);
    }
    return packer.finish(name);
}

// Packs what fits, and leaves the folder's position behind it. The number of records, or -1 and errno.
int pack(int fd, const attrlist& wanted, std::span<char> buffer) {
    // A record is at most eight times as long as what the disk's listing needs for it.
    std::vector<char> listing(std::clamp<std::size_t>(buffer.size() / 8, 512, 32768));
    std::size_t filled = 0;
    int count = 0;
    while (count == 0) {
        off_t last = ::lseek(fd, 0, SEEK_CUR);
        const ssize_t got = ::getdents64(fd, listing.data(), listing.size());
        if (got <= 0) {
            return static_cast<int>(got);
        }
        for (ssize_t at = 0; at < got;) {
            const char* const entry = listing.data() + at;
            unsigned short length = 0;
            off_t next = 0;
            std::memcpy(&length, entry + offsetof(dirent64, d_reclen), sizeof length);
            std::memcpy(&next, entry + offsetof(dirent64, d_off), sizeof next);
            const std::string name(entry + offsetof(dirent64, d_name));
            const std::string bytes = name == "." || name == ".." ? std::string() : record(fd, name, wanted);
            if (filled + bytes.size() > buffer.size()) {
                if (count == 0) {
                    errno = ERANGE;
                    return -1;
                }
                ::lseek(fd, last, SEEK_SET);
                break;
            }
            std::ranges::copy(bytes, buffer.begin() + static_cast<std::ptrdiff_t>(filled));
            filled += bytes.size();
            count += bytes.empty() ? 0 : 1;
            last = next;
            at += length;
        }
    }
    if (traits().damage) {
        traits().damage(buffer.first(filled), count);
    }
    return count;
}

} // namespace
} // namespace vellmoor::test::darwin

using namespace vellmoor::test::darwin;

int darwin_getattrlistbulk(int fd, void* wanted, void* buffer, std::size_t size, std::uint64_t /*options*/) {
    const std::lock_guard guard(lock());
    noteCall();
    if (state()) {
        const std::string folder = pathOf(fd);
        state()->listed.insert(lastComponent(folder));
        const int error = traits().failure ? traits().failure(folder, state()->batches[folder]) : 0;
        if (error != 0) {
            errno = error;
            return -1;
        }
        ++state()->batches[folder];
    }
    return pack(fd, *static_cast<const attrlist*>(wanted),
                std::span(static_cast<char*>(buffer), std::min(size, traits().batchBytes)));
}

// Finder's information only, which is all that is ever asked of a single path.
int darwin_getattrlist(const char* path, void* wanted, void* buffer, std::size_t size, unsigned options) {
    const auto& list = *static_cast<const attrlist*>(wanted);
    struct stat facts{};
    const bool follows = (options & FSOPT_NOFOLLOW) == 0;
    if ((follows ? ::stat(path, &facts) : ::lstat(path, &facts)) != 0) {
        return -1;
    }
    if (list.bitmapcount != ATTR_BIT_MAP_COUNT || list.commonattr != ATTR_CMN_FNDRINFO || list.dirattr != 0) {
        errno = EINVAL;
        return -1;
    }
    struct {
        std::uint32_t length;
        std::array<unsigned char, 32> finderInfo;
    } answer{};
    static_assert(sizeof answer == 36);
    std::array<char, PATH_MAX> resolved{};
    const char* const asked = follows ? ::realpath(path, resolved.data()) : path;
    const std::lock_guard guard(lock());
    noteCall();
    answer.length = sizeof answer;
    const bool isMarked = asked != nullptr && traits().bundles.contains(lastComponent(asked));
    answer.finderInfo[8] = isMarked && !S_ISLNK(facts.st_mode) ? 0x20 : 0;
    std::memcpy(buffer, &answer, std::min(size, sizeof answer));
    return 0;
}
