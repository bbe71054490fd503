#include "TreeRemoval.h"

#include "Descriptor.h"

#include <cerrno>
#include <cstdint>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

// The tree is walked with a stack of folders, by descriptor and single names only: a path could lead elsewhere by
// the time it is used. Only the innermost folders stay open; the way back up is "..", and the folder found there has
// to be the one that was left. Everything that touches the disk answers 0 or an errno.

namespace vellmoor {
namespace {

constexpr std::size_t openFolders = 6;
constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;

struct Identity {
    std::uint32_t deviceMajor = 0;
    std::uint32_t deviceMinor = 0;
    std::uint64_t inode = 0;

    [[nodiscard]] bool sameDevice(const Identity& other) const {
        return deviceMajor == other.deviceMajor && deviceMinor == other.deviceMinor;
    }
    bool operator==(const Identity&) const = default;
};

struct Facts {
    Identity identity;
    std::uint32_t mode = 0;
    std::uint32_t owner = 0;
    bool isMountRoot = false;
};

int readFacts(int folder, const char* name, Facts& facts) {
    struct statx status{};
    const int flags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | (*name == '\0' ? AT_EMPTY_PATH : 0);
    if (::statx(folder, name, flags, STATX_BASIC_STATS, &status) != 0) {
        return errno;
    }
    facts.identity = {status.stx_dev_major, status.stx_dev_minor, status.stx_ino};
    facts.mode = status.stx_mode;
    facts.owner = status.stx_uid;
    facts.isMountRoot = (status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0; // never set before Linux 5.8
    return 0;
}

// Gives the owner all rights on the folder open as `descriptor`, which may be O_PATH (hence through /proc).
bool makeAccessible(int descriptor) {
    Facts facts;
    if (readFacts(descriptor, "", facts) != 0 || !S_ISDIR(facts.mode) || facts.owner != ::geteuid() ||
        (facts.mode & S_IRWXU) == S_IRWXU) {
        return false;
    }
    const std::string self = "/proc/self/fd/" + std::to_string(descriptor);
    return ::chmod(self.c_str(), (facts.mode & 07777U) | S_IRWXU) == 0;
}

// Runs `deed` (0 or errno); when the rights of the folder `descriptor` forbid it, changes them and tries again.
template <class Deed>
int withAccess(int descriptor, const Deed& deed) {
    const int error = deed();
    return error == EACCES && makeAccessible(descriptor) ? deed() : error;
}

struct Folder {
    Descriptor descriptor; // closed while far above the current one
    Identity identity;
    std::string name;                 // in the folder above
    std::vector<std::string> folders; // still to be deleted
};

struct Listing {
    std::vector<std::string> folders;
    std::vector<std::string> others;
};

int list(int folder, Listing& listing) {
    Descriptor again(::openat(folder, ".", folderFlags)); // with a reading position of its own
    if (!again) {
        return errno;
    }
    struct CloseDirectory {
        void operator()(DIR* directory) const { ::closedir(directory); }
    };
    const std::unique_ptr<DIR, CloseDirectory> directory(::fdopendir(again.get()));
    if (!directory) {
        return errno;
    }
    (void)again.release(); // the stream closes it
    for (;;) {
        errno = 0;
        const dirent* entry = ::readdir(directory.get());
        if (entry == nullptr) {
            return errno;
        }
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") {
            (entry->d_type == DT_DIR ? listing.folders : listing.others).emplace_back(name);
        }
    }
}

class TreeRemoval {
public:
    explicit TreeRemoval(int top) : top_(top) {}

    int run(const char* name) {
        if (const int error = readFacts(top_, "", topFacts_); error != 0) {
            return error;
        }
        if (const int error = remove(name); error != 0) {
            return error;
        }
        while (!stack_.empty()) {
            if (const int error = step(); error != 0) {
                return error;
            }
        }
        return 0;
    }

private:
    [[nodiscard]] int current() const { return stack_.empty() ? top_ : stack_.back().descriptor.get(); }

    // The innermost folder: into its next folder, or out of it when it is empty.
    int step() {
        if (!stack_.back().folders.empty()) {
            const std::string next = std::move(stack_.back().folders.back());
            stack_.back().folders.pop_back();
            return enter(next.c_str());
        }
        return leave();
    }

    // Something that is a folder is entered, anything else deleted at once.
    int remove(const char* name) {
        const int error = unlink(name, 0);
        return error == EISDIR ? enter(name) : error;
    }

    int unlink(const char* name, int flags) {
        const int folder = current();
        return withAccess(folder, [&] {
            // Already gone is as good as deleted.
            return ::unlinkat(folder, name, flags) == 0 || errno == ENOENT ? 0 : errno;
        });
    }

    int enter(const char* name) {
        const int above = current();
        Facts facts;
        int error = withAccess(above, [&] { return readFacts(above, name, facts); });
        if (error != 0) {
            return error == ENOENT ? 0 : error;
        }
        if (!S_ISDIR(facts.mode)) {
            return unlink(name, 0);
        }
        const Identity& outer = stack_.empty() ? topFacts_.identity : stack_.back().identity;
        if (facts.isMountRoot || !facts.identity.sameDevice(outer)) {
            return EXDEV;
        }
        Folder folder;
        folder.identity = facts.identity;
        folder.name = name;
        error = open(above, name, facts, folder.descriptor);
        if (error != 0) {
            return error;
        }
        stack_.push_back(std::move(folder));
        closeFarAbove();
        return empty();
    }

    static int open(int above, const char* name, const Facts& expected, Descriptor& result) {
        result = Descriptor(::openat(above, name, folderFlags));
        if (!result && errno == EACCES) {
            const Descriptor closed(::openat(above, name, O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
            if (!closed || !makeAccessible(closed.get())) {
                return EACCES;
            }
            result = Descriptor(::openat(above, name, folderFlags));
        }
        if (!result) {
            return errno;
        }
        Facts opened;
        if (const int error = readFacts(result.get(), "", opened); error != 0) {
            return error;
        }
        return opened.identity == expected.identity ? 0 : ESTALE; // somebody swapped it
    }

    // Lists the folder just entered and deletes what is no folder.
    int empty() {
        const int folder = current();
        Listing listing;
        const int error = withAccess(folder, [&] {
            listing = {};
            return list(folder, listing);
        });
        if (error != 0) {
            return error;
        }
        stack_.back().folders = std::move(listing.folders);
        for (const std::string& name : listing.others) {
            const int failed = unlink(name.c_str(), 0);
            if (failed == EISDIR) { // this file system does not tell kinds in a listing
                stack_.back().folders.push_back(name);
            } else if (failed != 0) {
                return failed;
            }
        }
        return 0;
    }

    int leave() {
        if (const int error = reopenAbove(); error != 0) {
            return error;
        }
        const std::string name = std::move(stack_.back().name);
        stack_.pop_back();
        return unlink(name.c_str(), AT_REMOVEDIR);
    }

    int reopenAbove() {
        if (stack_.size() < 2 || stack_[stack_.size() - 2].descriptor) {
            return 0;
        }
        Folder& above = stack_[stack_.size() - 2];
        const int folder = current();
        const int error = withAccess(folder, [&] {
            above.descriptor = Descriptor(::openat(folder, "..", folderFlags));
            return above.descriptor ? 0 : errno;
        });
        if (error != 0) {
            return error;
        }
        Facts facts;
        if (const int failed = readFacts(above.descriptor.get(), "", facts); failed != 0) {
            return failed;
        }
        return facts.identity == above.identity ? 0 : ESTALE; // the tree was moved while we were in it
    }

    void closeFarAbove() {
        if (stack_.size() > openFolders) {
            stack_[stack_.size() - 1 - openFolders].descriptor.close();
        }
    }

    int top_;
    Facts topFacts_;
    std::vector<Folder> stack_;
};

} // namespace

int removeTree(int parent, const char* name) {
    return TreeRemoval(parent).run(name);
}

} // namespace vellmoor
