#pragma once

#include "Platform.h"
#include "SystemLayout.h"

#include <set>
#include <string>

namespace vellmoor {

/// The names of running programs. macOS: the last components that the process listing prints. Linux: for each
/// process of the user its executable's name and its own, or the token "flatpak:ID" or "snap:NAME".
std::set<std::string> runningProcessNames(const Platform& platform, const SystemLayout& layout);

} // namespace vellmoor
