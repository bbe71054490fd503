#include "trash/TrashDirectory.h"

#include "disk/Files.h"
#include "disk/Rename.h"
#include "trash/TrashNotes.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vellmoor {
namespace {

constexpr const char* expunged = "expunged";
constexpr std::string_view privatePrefix = "vellmoor-";
// In the Trash folder itself: a list of sizes being written, and an item where there was no room for a folder.
constexpr std::string_view sizesPrefix = ".vellmoor-sizes-";
constexpr std::string_view itemPrefix = ".vellmoor-item-";
constexpr std::size_t sizesLimit = std::size_t{64} << 20;
constexpr unsigned mostNumbers = 1'000'000;

std::vector<std::string> namesIn(int folder) {
    std::vector<std::string> names;
    auto again = reopenForReading(folder);
    const DirectoryStream stream(again ? ::fdopendir(again->get()) : nullptr);
    if (!stream) {
        return names; // what cannot be listed now is found by a later clean
    }
    (void)again->release(); // the stream closes it
    while (const dirent* entry = ::readdir(stream.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") {
            names.emplace_back(name);
        }
    }
    return names;
}

// False: somebody else is working with it.
bool lock(int file) {
    return ::flock(file, LOCK_EX | LOCK_NB) == 0;
}

} // namespace

TrashDirectory::TrashDirectory(Descriptor trash, TrashFolder place)
    : trash_(std::move(trash)),
      place_(std::move(place)) {}

TrashDirectory::~TrashDirectory() {
    finish();
}

int TrashDirectory::access(Descriptor& folder, int above, const char* name) {
    if (folder) {
        return 0;
    }
    auto opened = openFolder(above, name);
    if (!opened && opened.error() == EACCES) {
        raise(above);
        opened = openFolder(above, name);
    }
    if (!opened) {
        return opened.error();
    }
    const auto facts = factsAt(opened->get(), "");
    if (!facts) {
        return facts.error();
    }
    if (facts->owner != ::geteuid()) {
        return EPERM;
    }
    folder = std::move(*opened);
    return 0;
}

int TrashDirectory::open() {
    if (const int error = access(files_, trash_.get(), "files"); error != 0) {
        return error;
    }
    if (const auto facts = factsAt(files_.get(), "")) {
        device_ = facts->identity.device;
    }
    const int error = access(info_, trash_.get(), "info");
    return error == ENOENT ? 0 : error; // a Trash without notes can be emptied
}

int TrashDirectory::make() {
    raise(trash_.get());
    for (const char* name : {"files", "info"}) {
        if (auto made = makeFolder(trash_.get(), name); !made) {
            return made.error();
        }
    }
    if (const int error = open(); error != 0) {
        return error;
    }
    if (!info_) {
        return ENOENT;
    }
    if (const auto room = ::fpathconf(info_.get(), _PC_NAME_MAX); room > 0) {
        nameLimit_ = std::min<std::size_t>(nameLimit_, static_cast<std::size_t>(room));
    }
    return 0;
}

void TrashDirectory::begin() {
    if (!std::exchange(changed_, true)) {
        for (const Descriptor* folder : {&trash_, &files_, &info_}) {
            raise(folder->get());
        }
    }
}

void TrashDirectory::raise(int folder) {
    if (const auto before = makeAccessible(folder)) {
        if (auto again = openFolderBelow(folder, "")) {
            modes_.emplace_back(std::move(*again), *before);
        }
    }
}

std::expected<std::string, int> TrashDirectory::writeNote(const std::string& name, const std::string& text) {
    begin();
    unsigned& number = nextNumbers_.try_emplace(name, 1).first->second;
    for (; number < mostNumbers; ++number) {
        std::string given = trashName(name, number, nameLimit_);
        const std::string note = noteName(given);
        Descriptor file(
            ::openat(info_.get(), note.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
        if (!file) {
            if (errno == EEXIST) {
                continue;
            }
            return std::unexpected(errno);
        }
        if (!files::writeAll(file.get(), text) || !file.close()) {
            const int error = errno;
            ::unlinkat(info_.get(), note.c_str(), 0); // half a note is worse than none
            return std::unexpected(error);
        }
        ++number;
        return given;
    }
    return std::unexpected(EEXIST);
}

int TrashDirectory::removeNote(const std::string& name) {
    if (!info_) {
        return 0;
    }
    const std::string note = noteName(name);
    // A name so long that its note cannot exist has none.
    const bool isGone = ::unlinkat(info_.get(), note.c_str(), 0) == 0 || errno == ENOENT || errno == ENAMETOOLONG;
    return isGone ? 0 : errno;
}

void TrashDirectory::forgetNotes(const std::function<bool(const std::string& item, std::string_view note)>& isMeant) {
    constexpr std::size_t longest = std::size_t{1} << 16;
    if (!info_) {
        return;
    }
    for (const std::string& note : namesIn(info_.get())) {
        const auto item = notedItem(note);
        const auto facts = item ? factsAt(files_.get(), item->c_str()) : std::unexpected(EINVAL);
        if (facts || facts.error() != ENOENT) {
            continue;
        }
        const Descriptor file(
            ::openat(info_.get(), note.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
        struct stat status{};
        if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
            continue;
        }
        if (const auto text = files::contents(file.get(), longest); text && isMeant(*item, *text)) {
            begin();
            ::unlinkat(info_.get(), note.c_str(), 0); // what stays is found by the next clean
        }
    }
}

std::expected<TrashDirectory::PrivateFolder, int> TrashDirectory::privateFolder() {
    begin();
    if (private_) {
        return PrivateFolder{.folder = private_.get(), .prefix = ""};
    }
    madeExpunged_ = !factsAt(trash_.get(), expunged);
    auto above = makeFolder(trash_.get(), expunged);
    for (unsigned number = 1; above && number < mostNumbers; ++number) {
        privateName_ = std::string(privatePrefix) + std::to_string(::getpid()) + "-" + std::to_string(number);
        if (::mkdirat(above->get(), privateName_.c_str(), 0700) != 0) {
            if (errno == EEXIST) {
                continue;
            }
            above = std::unexpected(errno);
            break;
        }
        const auto place = openFolder(above->get(), privateName_.c_str());
        auto opened = place ? reopenForReading(place->get()) : std::unexpected(place.error());
        if (opened && lock(opened->get())) {
            private_ = std::move(*opened);
            return PrivateFolder{.folder = private_.get(), .prefix = ""};
        }
        const int failed = opened ? EBUSY : opened.error();
        ::unlinkat(above->get(), privateName_.c_str(), AT_REMOVEDIR); // else a later clean removes it
        above = std::unexpected(failed);
    }
    const int error = above ? EEXIST : above.error();
    if (error == ENOSPC || error == EDQUOT) { // a full disk is when a Trash is emptied: a name still finds room
        return PrivateFolder{.folder = trash_.get(), .prefix = std::string(itemPrefix)};
    }
    return std::unexpected(error);
}

void TrashDirectory::recover() {
    for (const std::string& name : namesIn(trash_.get())) {
        if (name.starts_with(itemPrefix)) {
            recoverItem(trash_.get(), name, name.substr(itemPrefix.size()));
        } else if (name.starts_with(sizesPrefix)) {
            const Descriptor file(::openat(trash_.get(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
            if (file && lock(file.get())) {
                ::unlinkat(trash_.get(), name.c_str(), 0);
            }
        }
    }
    if (const auto above = openFolder(trash_.get(), expunged)) {
        for (const std::string& name : namesIn(above->get())) {
            if (name.starts_with(privatePrefix)) {
                recoverFolder(above->get(), name);
            }
        }
    }
}

void TrashDirectory::recoverFolder(int above, const std::string& name) {
    const auto place = openFolder(above, name.c_str());
    const auto facts = place ? factsAt(place->get(), "") : std::unexpected(place.error());
    const auto opened = facts && facts->owner == ::geteuid() ? reopenForReading(place->get()) : std::unexpected(EPERM);
    if (!opened || !lock(opened->get())) {
        return; // another clean is at work there
    }
    for (const std::string& item : namesIn(opened->get())) {
        recoverItem(opened->get(), item, item);
    }
    ::unlinkat(above, name.c_str(), AT_REMOVEDIR); // what is not empty yet is for the next time
}

// Back to where the user sees it: what was ticked and is still there can be ticked again.
void TrashDirectory::recoverItem(int folder, const std::string& from, const std::string& name) {
    if (const auto facts = factsAt(folder, from.c_str())) {
        (void)renameWithRights(folder, from.c_str(), facts->identity, files_.get(), name.c_str()); // else the next time
    }
}

void TrashDirectory::finish() {
    if (private_) {
        if (const auto above = openFolder(trash_.get(), expunged)) {
            ::unlinkat(above->get(), privateName_.c_str(), AT_REMOVEDIR);
        }
        private_.close();
        if (madeExpunged_) {
            ::unlinkat(trash_.get(), expunged, AT_REMOVEDIR); // stays when somebody else uses it by now
        }
    }
    if (changed_) {
        rewriteSizes();
        for (const Descriptor* folder : {&info_, &files_}) {
            if (const auto open = *folder ? reopenForReading(folder->get()) : std::unexpected(ENOENT)) {
                ::fsync(open->get());
            }
        }
        changed_ = false;
    }
    for (; !modes_.empty(); modes_.pop_back()) {
        setMode(modes_.back().first.get(), modes_.back().second);
    }
}

// It is a cache that every reader checks: a failure costs nothing but time.
void TrashDirectory::rewriteSizes() {
    const Descriptor old(
        ::openat(trash_.get(), "directorysizes", O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status{};
    if (!old || ::fstat(old.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return;
    }
    const auto text = files::contents(old.get(), sizesLimit);
    const std::string kept = text ? withoutDirectorySizes(*text, sizesToForget_) : "";
    if (!text || kept == *text) {
        return;
    }
    const std::string temporary = std::string(sizesPrefix) + std::to_string(::getpid());
    Descriptor file(::openat(trash_.get(), temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                             status.st_mode & 0777U));
    if (!file || !lock(file.get())) {
        return;
    }
    if (!files::writeAll(file.get(), kept) ||
        ::renameat(trash_.get(), temporary.c_str(), trash_.get(), "directorysizes") != 0) {
        ::unlinkat(trash_.get(), temporary.c_str(), 0);
    }
}

} // namespace vellmoor
