// Desktop entries from the bytes of the file to the record.
#include "Fuzz.h"
#include "KeyFiles.h"
#include "desktop/DesktopEntries.h"

#include <cstddef>

using namespace vellmoor;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string text(data, data + size);
    for (const bool isUnit : {false, true}) {
        const std::optional<KeyFile> file = parseKeyFile(text, isUnit);
        if (!file) {
            continue;
        }
        const std::optional<InstalledEntry> entry = desktopEntry(*file, "id", "/id.desktop");
        FUZZ_EXPECT(entry.has_value() == file->contains("Desktop Entry"));
        if (!entry) {
            continue;
        }
        const auto& group = file->at("Desktop Entry");
        FUZZ_EXPECT(entry->id == "id" && !entry->shadowed);
        FUZZ_EXPECT(entry->exec.empty() || group.contains("Exec"));
        FUZZ_EXPECT(entry->execProgram.size() <= entry->exec.size());
        FUZZ_EXPECT(entry->flatpakId.empty() || !entry->execProgram.empty());
        FUZZ_EXPECT(!entry->hidden || group.contains("Hidden"));
    }
    return 0;
}
