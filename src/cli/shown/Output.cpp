#include "shown/Output.h"

#include "TextTable.h"

#include <iostream>

namespace vellmoor::cli {

void complain(const std::string& line) {
    std::cerr << "vellmoor-cli: " << line << '\n';
}

ExitStatus fail(const std::string& line, ExitStatus status) {
    complain(line);
    return status;
}

std::string shown(const std::filesystem::path& path) {
    return terminal::fitted(path.native(), path.native().size());
}

} // namespace vellmoor::cli
