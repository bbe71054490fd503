// The process listing of ps.
#include "Fuzz.h"
#include "processes/MemoryText.h"

#include <cstddef>

using namespace vellmoor;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string text(data, data + size);
    for (const std::string_view line : lines(text)) {
        const std::optional<ProcessMemorySample> sample = processMemorySample(line);
        if (!sample) {
            continue;
        }
        FUZZ_EXPECT(sample->bytes % 1024 == 0);
        FUZZ_EXPECT(!sample->command.empty() && trimmed(sample->command) == sample->command);
        FUZZ_EXPECT(line.find(sample->command) != std::string_view::npos);
        // Written again, it reads the same.
        const std::string again =
            std::to_string(sample->pid) + "\t" + std::to_string(sample->bytes / 1024) + "  " + sample->command + " ";
        FUZZ_EXPECT(processMemorySample(again) == sample);
    }
    return 0;
}
