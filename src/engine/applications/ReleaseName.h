// What file names of releases carry behind the name of the program.
#pragma once

#include <string>
#include <string_view>

namespace vellmoor {

/// A file name without extension and without the version, machine and system that release files carry at the end.
std::string releaseName(std::string_view fileName);
/// A name without the versions at its end: "Krita 5.2" is "Krita".
std::string withoutVersion(std::string_view name);

} // namespace vellmoor
