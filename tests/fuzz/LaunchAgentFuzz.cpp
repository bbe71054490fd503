// Property lists, XML or binary, as launch agents and as the Info.plist of a bundle.
#include "Fuzz.h"
#include "PropertyLists.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

using namespace vellmoor;

namespace {

/// A file in memory with these bytes.
class MemoryFile {
public:
    MemoryFile(const unsigned char* data, std::size_t size) : descriptor_(::memfd_create("list", MFD_CLOEXEC)) {
        FUZZ_EXPECT(descriptor_ >= 0);
        FUZZ_EXPECT(::write(descriptor_, data, size) == static_cast<ssize_t>(size));
    }
    ~MemoryFile() { ::close(descriptor_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    [[nodiscard]] Path path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

private:
    int descriptor_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const MemoryFile file(data, size);
    const std::optional<LaunchAgent> agent = test::readLaunchAgent(file.path());
    if (agent) {
        for (const std::string& argument : agent->arguments) {
            FUZZ_EXPECT(argument.size() <= size);
        }
        FUZZ_EXPECT(agent->label.value_or("").size() <= size);
        FUZZ_EXPECT(agent->program.value_or("").size() <= size);
    }
    return 0;
}
