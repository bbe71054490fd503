#pragma once

#include <string_view>

namespace vellmoor::test {

/// Whether the bytes are UTF-8 as RFC 3629 has it.
bool isUtf8(std::string_view text);

} // namespace vellmoor::test
