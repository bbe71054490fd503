// The user's account, machine and settings, by Foundation.
#pragma once

#include "Platform.h"

#include <cstdint>
#include <optional>
#include <string>

namespace vellmoor::mac {

/// From the account's record, whatever $HOME says.
Path homeFolder();

std::int64_t physicalMemory();

/// The first of the user's languages ("zh-Hans-CN"); the one chosen for this application comes before the system's.
std::optional<std::string> preferredLanguage();

/// A text among this program's settings, in the domain of its bundle identifier; nothing when it has none.
std::optional<std::string> setting(const std::string& key);
void setSetting(const std::string& key, const std::string& value);

/// Tells the scheduler that somebody waits for what this thread does.
void hurryThisThread();

} // namespace vellmoor::mac
