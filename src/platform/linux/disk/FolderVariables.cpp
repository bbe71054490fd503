#include "disk/FolderVariables.h"

#include <array>
#include <cstdlib>

namespace vellmoor {
namespace {

constexpr std::array names{"HOME",          "XDG_CONFIG_HOME", "XDG_CACHE_HOME",
                           "XDG_DATA_HOME", "XDG_STATE_HOME",  "XDG_RUNTIME_DIR"};

/// Belongs to the process as its environment does.
std::map<std::string, std::string>& taken() {
    static std::map<std::string, std::string> variables;
    return variables;
}

} // namespace

void unsetUnusableFolders() {
    for (const char* name : names) {
        const char* value = std::getenv(name);
        if (value != nullptr && *value != '/') {
            taken().insert_or_assign(name, value);
            ::unsetenv(name);
        }
    }
}

const std::map<std::string, std::string>& originalFolders() {
    return taken();
}

} // namespace vellmoor
