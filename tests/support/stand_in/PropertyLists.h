#pragma once

#include "Platform.h"

#include <optional>
#include <string>

namespace vellmoor::test {

// Property lists, XML or binary, as macOS reads them: a value of an unexpected type counts as absent. Only regular
// files of at most 1 MiB are read.

/// The names in a bundle's Info.plist; nothing when there is no such folder, no names when it has no such file.
std::optional<BundleInfo> readBundleInfo(const Path& bundle);

/// Nothing unless the file holds a dictionary.
std::optional<LaunchAgent> readLaunchAgent(const Path& propertyList);

/// The same list in the binary form; empty when `xml` is no list.
std::string binaryPropertyList(const std::string& xml);

} // namespace vellmoor::test
