// The part of a call that only the running system can do.
#pragma once

#include "Arguments.h"
#include "Session.h"

#include <expected>
#include <filesystem>
#include <string>

namespace vellmoor::probe {

/// The layout of a call that names none.
Layout ownLayout();

/// The user's home folder: on Linux that of the environment, on macOS that of the account.
std::filesystem::path userHome();

/// Whether the real system answers the call; if not, the stand-in for macOS does. Fails for a layout that cannot be
/// shown here.
std::expected<bool, std::string> isForReal(const Arguments& arguments, Layout layout);

/// The real system and its layout.
Session openHost(const Arguments& arguments);

} // namespace vellmoor::probe
