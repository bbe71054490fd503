// The files of /proc/PID and a zram device's mm_stat: other users' programs choose parts of them.
#include "Fuzz.h"
#include "ProcessLine.h"
#include "processes/ControlGroups.h"
#include "processes/MemoryText.h"

#include <cstddef>

using namespace vellmoor;

namespace {

void readGroups(const std::string& text) {
    const std::string_view group = unifiedGroup(text);
    FUZZ_EXPECT(group.find('\n') == std::string_view::npos);
    for (const std::string& path : {std::string(group), "/user@7.service/" + std::string(group), text}) {
        const GroupApplication application = groupApplication(path, 7);
        FUZZ_EXPECT(!application.id || !application.id->empty());
        FUZZ_EXPECT(!application.id || !application.isTerminalChild);
        FUZZ_EXPECT(!groupApplication(path, 8).id || path.find("user@8.service") != std::string::npos);
        FUZZ_EXPECT(groupFlatpak(path).size() <= path.size());
        FUZZ_EXPECT(groupSnap(path).size() <= path.size());
    }
    FUZZ_EXPECT(unescapedUnit(text).size() <= text.size());
    FUZZ_EXPECT(text.find('\\') != std::string::npos || unescapedUnit(text) == text);
    (void)unitApplication(text);
}

void readNumbers(const std::string& text) {
    FUZZ_EXPECT(residentBytes(text, 4096).value_or(0) >= 0);
    FUZZ_EXPECT(residentBytes(text, 4096).value_or(0) % 4096 == 0);
    FUZZ_EXPECT(zramBytes(text) >= 0);
}

void readNames(const std::string& text) {
    const std::optional<std::string_view> parent = statusValue(text, "PPid:");
    FUZZ_EXPECT(!parent || trimmed(*parent) == *parent);
    (void)environmentValue(text, "APPIMAGE");
    (void)effectiveUser(text);
    const std::optional<ProcessLine> line = parseProcessLine("42 (" + text + ") S 7 1 1 34816");
    FUZZ_EXPECT(!line || line->pid == 42);
    (void)parseProcessLine(text);
    const std::string before = std::string("NAME=1") + '\0' + text;
    FUZZ_EXPECT(environmentValue(before, "NAME") == std::string_view("1"));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string text(data, data + size);
    readGroups(text);
    readNumbers(text);
    readNames(text);
    return 0;
}
