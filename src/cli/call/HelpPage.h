#pragma once

#include <string>

namespace vellmoor::cli {

/// The whole help text, in the current language.
std::string helpPage();

} // namespace vellmoor::cli
