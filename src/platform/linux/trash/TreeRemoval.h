#pragma once

#include "CancelToken.h"
#include "FileIdentity.h"

namespace vellmoor {

/// Deletes `name` in the folder open as `parent`, with everything below it: no link is followed, no file system
/// and no mount point is entered. `expected` is what has been seen there; another folder of that name is not entered
/// (ESTALE). A folder of the user's inside that forbids it is made accessible. Any depth, at most a dozen
/// descriptors. Stops at the first entry that cannot be deleted; 0, or its errno (EXDEV: another file system or a
/// mount point). ECANCELED once `stop` is set, between two entries.
int removeTree(int parent, const char* name, const FileIdentity& expected, const CancelToken* stop = nullptr);

} // namespace vellmoor
