// The user's account and settings, by Foundation.
#pragma once

#include "Platform.h"

#include <optional>
#include <string>

namespace vellmoor::mac {

/// From the account's record, whatever $HOME says.
Path homeFolder();

/// A text among this program's settings, in the domain of its bundle identifier; nothing when it has none.
std::optional<std::string> setting(const std::string& key);
void setSetting(const std::string& key, const std::string& value);

} // namespace vellmoor::mac
