#include "disk/Rename.h"

#include "disk/Descriptor.h"
#include "disk/OpenFolders.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>

namespace vellmoor {
namespace {

// Takes the name: nobody else can take it from now on, and what is renamed over it replaces only this.
int reserve(int folder, const char* name, bool asFolder) {
    if (asFolder) {
        return ::mkdirat(folder, name, 0700) == 0 ? 0 : errno;
    }
    Descriptor file(::openat(folder, name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    return file ? 0 : errno;
}

int renameOverReservation(int fromFolder, const char* from, int toFolder, const char* to) {
    const auto facts = factsAt(fromFolder, from);
    if (!facts) {
        return facts.error();
    }
    const bool isFolder = facts->identity.kind == FileKind::Folder;
    if (const int error = reserve(toFolder, to, isFolder); error != 0) {
        return error;
    }
    if (::renameat(fromFolder, from, toFolder, to) == 0) {
        return 0;
    }
    const int error = errno;
    // A folder into which somebody has put something by now stays: it is no longer only ours.
    ::unlinkat(toFolder, to, isFolder ? AT_REMOVEDIR : 0);
    return error;
}

} // namespace

int renameWithoutReplacing(int fromFolder, const char* from, int toFolder, const char* to) {
    if (::renameat2(fromFolder, from, toFolder, to, RENAME_NOREPLACE) == 0) {
        return 0;
    }
    const int error = errno;
    return error == EINVAL || error == ENOSYS ? renameOverReservation(fromFolder, from, toFolder, to) : error;
}

int renameWithRights(int fromFolder, const char* from, const FileIdentity& expected, int toFolder, const char* to) {
    const int error = renameWithoutReplacing(fromFolder, from, toFolder, to);
    if (error != EACCES || expected.kind != FileKind::Folder) {
        return error;
    }
    const auto item = openFolder(fromFolder, from);
    const auto facts = item ? factsAt(item->get(), "") : std::unexpected(item.error());
    if (!facts || !isSame(expected, facts->identity, Sameness::File)) {
        return error;
    }
    const auto before = makeAccessible(item->get());
    if (!before) {
        return error;
    }
    const int again = renameWithoutReplacing(fromFolder, from, toFolder, to);
    setMode(item->get(), *before);
    return again;
}

} // namespace vellmoor
