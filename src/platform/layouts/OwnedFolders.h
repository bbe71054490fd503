#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vellmoor {

/// Folders that belong to applications, which write to them while they run.
struct OwnedFolders {
    std::filesystem::path folder;
    std::string names; ///< globMatches alternatives: the children that are meant; empty: the folder itself
    std::string owner; ///< shown to the user; empty: the application whose ID the child's name is
    /// One of these among the running names means that it runs. One that ends in ":" is completed by the child's name.
    std::vector<std::string> tokens;
};

} // namespace vellmoor
