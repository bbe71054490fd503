// The variables that name the home and the base folders, as other libraries in this process read them.
#pragma once

#include <map>
#include <string>

namespace vellmoor {

/// Takes those whose value is empty or no absolute path out of this process's environment: they count as unset, but
/// GLib only tests for emptiness. To be called first of all, before any thread and any call of GLib.
void unsetUnusableFolders();

/// What was taken out, by name: programs that the user opens get it back.
const std::map<std::string, std::string>& originalFolders();

} // namespace vellmoor
