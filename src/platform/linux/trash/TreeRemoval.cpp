#include "trash/TreeRemoval.h"

#include "disk/Descriptor.h"
#include "disk/OpenFolders.h"

#include <cerrno>
#include <cstdint>
#include <dirent.h>
#include <fcntl.h>
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

// Runs `deed` (0 or errno); when the rights of the folder `descriptor` forbid it, changes them and tries again.
// Only for folders inside the tree, which are known to be the ones that were meant.
template <class Deed>
int withAccess(int descriptor, const Deed& deed) {
    const int error = deed();
    return error == EACCES && makeAccessible(descriptor) ? deed() : error;
}

struct Folder {
    Descriptor descriptor; // closed while far above the current one
    FileIdentity identity;
    std::string name;                 // in the folder above
    std::vector<std::string> folders; // still to be deleted
};

struct Listing {
    std::vector<std::string> folders;
    std::vector<std::string> others;
};

int list(int folder, Listing& listing) {
    auto again = reopenForReading(folder); // with a reading position of its own
    if (!again) {
        return again.error();
    }
    const DirectoryStream directory(::fdopendir(again->get()));
    if (!directory) {
        return errno;
    }
    (void)again->release(); // the stream closes it
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

bool isSameFolder(const FileIdentity& one, const FileIdentity& other) {
    return one.device == other.device && one.inode == other.inode;
}

class TreeRemoval {
public:
    TreeRemoval(int top, const CancelToken* stop) : top_(top), stop_(stop) {}

    int run(const char* name, const FileIdentity& expected) {
        const auto above = factsAt(top_, "");
        if (!above) {
            return above.error();
        }
        device_ = above->identity.device;
        // Only what is known not to be a folder may be deleted by its name alone.
        const int error = expected.kind == FileKind::Folder ? enter(name, &expected) : unlink(name, 0);
        if (error != 0) {
            return error;
        }
        while (!stack_.empty()) {
            if (const int failed = step(); failed != 0) {
                return failed;
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

    /// Already gone is as good as deleted; a look tells.
    static int unlessGone(int error, int folder, const char* name) {
        const auto left = error == ENOENT ? factsAt(folder, name) : std::unexpected(0);
        return !left && meansGone(left.error()) ? 0 : error;
    }

    int unlink(const char* name, int flags) {
        if (stop_ != nullptr && stop_->isCancelled()) {
            return ECANCELED;
        }
        const int folder = current();
        const auto deed = [&] { return ::unlinkat(folder, name, flags) == 0 ? 0 : unlessGone(errno, folder, name); };
        return stack_.empty() ? deed() : withAccess(folder, deed); // the folder above the tree is not ours to change
    }

    // Opens the folder as a place first, so that what is looked at, made accessible and read is one and the same.
    int enter(const char* name, const FileIdentity* expected = nullptr) {
        const int above = current();
        auto place = openFolder(above, name);
        if (!place && place.error() == EACCES && !stack_.empty() && makeAccessible(above)) {
            place = openFolder(above, name);
        }
        if (!place) {
            const int error = place.error();
            if (error == ENOTDIR || error == ELOOP) { // no folder after all
                return expected == nullptr ? unlink(name, 0) : ESTALE;
            }
            return unlessGone(error, above, name);
        }
        const auto facts = factsAt(place->get(), "");
        if (!facts) {
            return facts.error();
        }
        if (expected != nullptr && !isSameFolder(facts->identity, *expected)) {
            return ESTALE; // somebody swapped it
        }
        if (facts->isMountRoot || facts->identity.device != device_) {
            return EXDEV;
        }
        Folder folder;
        folder.identity = facts->identity;
        folder.name = name;
        const int error = withAccess(place->get(), [&] {
            auto open = reopenForReading(place->get());
            folder.descriptor = open ? std::move(*open) : Descriptor();
            return open ? 0 : open.error();
        });
        if (error != 0) {
            return error;
        }
        place->close();
        stack_.push_back(std::move(folder));
        closeFarAbove();
        return empty();
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
        const auto facts = factsAt(above.descriptor.get(), "");
        if (!facts) {
            return facts.error();
        }
        return isSameFolder(facts->identity, above.identity) ? 0 : ESTALE; // the tree was moved while we were in it
    }

    void closeFarAbove() {
        if (stack_.size() > openFolders) {
            stack_[stack_.size() - 1 - openFolders].descriptor.close();
        }
    }

    int top_;
    const CancelToken* stop_;
    std::uint64_t device_ = 0;
    std::vector<Folder> stack_;
};

} // namespace

int removeTree(int parent, const char* name, const FileIdentity& expected, const CancelToken* stop) {
    return TreeRemoval(parent, stop).run(name, expected);
}

} // namespace vellmoor
