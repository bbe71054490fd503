#pragma once

#include <filesystem>

namespace vellmoor {

/// Every page over the real engine on `home`, both languages; nothing is changed there. False when one failed.
bool takePicturesOfHome(const std::filesystem::path& home, const std::filesystem::path& folder);

} // namespace vellmoor
