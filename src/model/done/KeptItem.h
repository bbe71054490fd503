#pragma once

#include <filesystem>
#include <string>

namespace vellmoor {

/// A path that the user never wants to be offered again.
struct KeptItem {
    std::filesystem::path url;
    std::string name;     ///< last path component
    std::string location; ///< parent folder in display form
    std::string symbol;
    bool exists = true;
};

} // namespace vellmoor
