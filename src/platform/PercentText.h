// Names of any bytes as plain text, the way Trash notes and our own lists hold them (RFC 2396, "Escaped Encoding").
#pragma once

#include <string>
#include <string_view>

namespace vellmoor {

/// Unreserved characters and "/" as they are, every other byte as %XX. The answer has no white space and no line feed.
std::string percentEncoded(std::string_view bytes);

/// The bytes again; a "%" that no two hexadecimal digits follow stands for itself.
std::string percentDecoded(std::string_view text);

} // namespace vellmoor
