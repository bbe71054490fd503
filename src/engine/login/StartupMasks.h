// What a disabled login item leaves in its place, so that no file of the same name in a folder of the system takes
// over.
#pragma once

#include "layouts/StartupLayout.h"
#include "scan/EngineContext.h"

#include <string>

namespace vellmoor {

/// Whether another file of that name would start when the configuration is gone.
bool needsStartupMask(const EngineContext& context, const StartupFolders& folders, const Path& file);

/// Whether a mask lies there: a desktop entry that we wrote as deleted, or systemd's link to /dev/null.
bool isStartupMask(const Platform& platform, StartupKind kind, const Path& file);

/// Makes a mask; `name` is what an entry calls itself. Fails when something of that name exists.
Outcome createStartupMask(const Platform& platform, StartupKind kind, const Path& file, const std::string& name);

} // namespace vellmoor
