#pragma once

#include <string_view>

namespace vellmoor {

/// Whether `name` matches `pattern`, in which "*" stands for any run of characters and everything else for itself.
bool globMatches(std::string_view pattern, std::string_view name);

} // namespace vellmoor
