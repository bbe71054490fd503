// vm_stat's text and /proc/meminfo, which are read by the same functions.
#include "Fuzz.h"
#include "processes/MemoryText.h"

#include <cstddef>

using namespace vellmoor;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string text(data, data + size);
    FUZZ_EXPECT(vmPageSize(text) >= 1);
    for (const char* label : {"Pages free", "Pages active", "File-backed pages", "Active:", "MemTotal:"}) {
        const std::optional<std::int64_t> count = labelledCount(label, text);
        FUZZ_EXPECT(!count || *count >= 0);
        FUZZ_EXPECT(vmPageCount(label, text) == count.value_or(0));
        // A line behind the text counts only when the text has none of that label; one before it always.
        const std::string line = std::string(label) + " 7.";
        FUZZ_EXPECT(vmPageCount(label, text + "\n" + line) == count.value_or(7));
        FUZZ_EXPECT(vmPageCount(label, line + "\n" + text) == 7);
    }
    return 0;
}
