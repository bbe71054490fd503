#pragma once

namespace vellmoor {

/// Renames between open folders and never replaces anything: EEXIST. Where the file system cannot promise that, the
/// new name is first taken by an empty file or folder of our own. 0 or the errno.
int renameWithoutReplacing(int fromFolder, const char* from, int toFolder, const char* to);

} // namespace vellmoor
