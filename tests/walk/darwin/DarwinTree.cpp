#include "DarwinTree.h"

namespace vellmoor::walk::test {

namespace fs = std::filesystem;
using vellmoor::test::allocatedBytes;
using vellmoor::test::TemporaryFolder;

void fill(const TemporaryFolder& home) {
    for (int i = 0; i < 60; ++i) {
        const std::string folder = "folder " + std::to_string(i % 7) + "/" + std::string(static_cast<unsigned>(i), 'n');
        home.file(folder + "/file " + std::to_string(i), std::int64_t{700} * i);
        home.file("folder " + std::to_string(i % 7) + "/" + std::to_string(i), i);
        home.link("..", folder + "/link");
    }
}

std::set<std::string> filesOnDisk(const fs::path& root, std::int64_t& bytes) {
    std::set<std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (entry.symlink_status().type() == fs::file_type::regular) {
            files.insert(entry.path().lexically_relative(root).native());
            bytes += allocatedBytes(entry.path());
        }
    }
    return files;
}

} // namespace vellmoor::walk::test
