// The buffer that macOS fills with a folder's entries; on a damaged disk it may hold anything.
#include "AttributeRecord.h"
#include "Fuzz.h"

#include <cstring>
#include <memory>

using namespace vellmoor::walk;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    // The first byte says how many records there are; the rest gets memory of exactly its size.
    const int count = size > 0 ? data[0] : 0;
    const std::size_t length = size > 0 ? size - 1 : 0;
    const auto bytes = std::make_unique<char[]>(length);
    if (length > 0) {
        std::memcpy(bytes.get(), data + 1, length);
    }
    const std::span<const char> buffer(bytes.get(), length);
    const RecordsExtent extent = extentOf(buffer, count);
    FUZZ_EXPECT(extent.bytes <= length);
    int records = 0;
    for (std::span<const char> rest = buffer.first(extent.bytes); !rest.empty(); ++records) {
        const std::size_t before = rest.size();
        const auto record = takeRecord(rest);
        FUZZ_EXPECT(rest.size() < before);
        if (!record) {
            continue;
        }
        FUZZ_EXPECT(record->name.data() >= buffer.data());
        FUZZ_EXPECT(record->name.data() + record->name.size() < buffer.data() + extent.bytes);
        FUZZ_EXPECT(std::strlen(record->name.data()) == record->name.size() && !record->name.empty());
        FUZZ_EXPECT(record->name.find('/') == std::string_view::npos && record->name != "." && record->name != "..");
        FUZZ_EXPECT(record->allocatedBytes >= 0);
    }
    FUZZ_EXPECT(extent.isWhole ? records == count : records < count);
    return 0;
}
