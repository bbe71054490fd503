// The part of a call that only the running system can do.
#pragma once

#include "Arguments.h"

#include <expected>
#include <string>

namespace vellmoor::probe {

/// The layout of a call that names none.
Layout ownLayout();

/// Whether the real system answers the call; if not, the stand-in for macOS does. Fails for a layout that cannot be
/// shown here.
std::expected<bool, std::string> isForReal(const Arguments& arguments, Layout layout);

} // namespace vellmoor::probe
