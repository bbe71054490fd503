// A tree for walks as macOS has them, and what its entries may be marked with.
#pragma once

#include "TemporaryFolder.h"

#include <cstdint>
#include <filesystem>
#include <set>
#include <string>

namespace vellmoor::walk::test {

inline constexpr std::uint32_t hiddenFlag = 0x8000;        ///< UF_HIDDEN
inline constexpr std::uint32_t datalessFlag = 0x4000'0000; ///< SF_DATALESS

/// Makes a few hundred files, folders and links, with names of all lengths.
void fill(const vellmoor::test::TemporaryFolder& home);

/// The plain files below `root`, by their relative paths; adds to `bytes` what they take.
std::set<std::string> filesOnDisk(const std::filesystem::path& root, std::int64_t& bytes);

} // namespace vellmoor::walk::test
