// Application bundles, packages and launch agents, by Foundation. Platform.h says what each one answers.
#pragma once

#include "Platform.h"

#include <optional>

namespace vellmoor::mac {

/// Whether Finder marked a folder as a package of its own.
bool hasBundleMark(const Path& folder);

/// Whether LaunchServices knows a folder as a package, by its extension or its mark.
bool isDeclaredPackage(const Path& folder);

/// Nothing when there is no such folder. The names are those of the user's language where the bundle has them. A
/// bundle that changes on the disk keeps its names until this process ends.
std::optional<BundleInfo> bundleInfo(const Path& bundle);

/// This program's bundle, or the folder of its executable when it runs without one.
Path ownPath();

/// Reads XML, binary and old-style property lists of at most 1 MiB. An argument that is no string makes the whole list
/// count as absent.
std::optional<LaunchAgent> launchAgent(const Path& propertyList);

} // namespace vellmoor::mac
