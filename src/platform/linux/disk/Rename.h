#pragma once

#include "FileIdentity.h"

namespace vellmoor {

/// Renames between open folders and never replaces anything: EEXIST. Where the file system cannot promise that, the
/// new name is first taken by an empty file or folder of our own. 0 or the errno.
int renameWithoutReplacing(int fromFolder, const char* from, int toFolder, const char* to);

/// The same for a read-only folder of the user's, too: to change its place takes rights in it, which it has for that
/// moment. `expected` is what has been seen there; nothing else gets rights.
int renameWithRights(int fromFolder, const char* from, const FileIdentity& expected, int toFolder, const char* to);

} // namespace vellmoor
