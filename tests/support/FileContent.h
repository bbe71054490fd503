#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace vellmoor::test {

/// All bytes of a file; empty for one that cannot be read.
inline std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace vellmoor::test
