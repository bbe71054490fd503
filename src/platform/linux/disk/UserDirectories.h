#pragma once

#include "Platform.h"

#include <string_view>

namespace vellmoor {

/// The user's folders as "user-dirs.dirs" says, whose text this is: assignments of XDG_…_DIR to "$HOME/..." or an
/// absolute path. What else stands there names no folder.
UserFolders userDirectories(std::string_view text, const Path& home);

} // namespace vellmoor
