#pragma once

#include <filesystem>

namespace vellmoor {

/// Every page, state, sheet and dialog over scripted results, both languages. False when one picture failed.
bool takePicturesOfSamples(const std::filesystem::path& folder);

} // namespace vellmoor
