// The command lines of desktop entries and unit files, which any program may write.
#include "Fuzz.h"
#include "desktop/ExecLine.h"

#include <algorithm>
#include <cstddef>

using namespace vellmoor;

namespace {

/// `word` as the Desktop Entry Specification wants an argument quoted.
std::string quoted(const std::string& word) {
    std::string out = "\"";
    for (const char c : word) {
        if (std::string_view("\"`$\\").find(c) != std::string_view::npos) {
            out += '\\';
        }
        out += c;
    }
    return out + '"';
}

void splitAgain(const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& word : words) {
        line += quoted(word) + ' ';
    }
    const auto again = execWords(line);
    FUZZ_EXPECT(again && *again == words);
}

void readWords(const std::string& text) {
    const auto words = execWords(text);
    if (!words) {
        FUZZ_EXPECT(text.find_first_of("\"'") != std::string::npos);
        return;
    }
    std::size_t length = 0;
    for (const std::string& word : *words) {
        length += word.size();
    }
    FUZZ_EXPECT(length <= text.size());
    splitAgain(*words);
    const std::string program = execProgram(*words);
    FUZZ_EXPECT(program.empty() || std::ranges::find(*words, program) != words->end());
    const std::string id = flatpakApplication(*words);
    FUZZ_EXPECT(id.empty() || (std::ranges::count(id, '.') >= 2 && id.find('/') == std::string::npos));
    FUZZ_EXPECT(id.empty() || (!id.starts_with('-') && id.find("..") == std::string::npos));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string text(data, data + size);
    readWords(text);
    readWords("flatpak run " + text);
    for (const std::string& part : listValue(text)) {
        FUZZ_EXPECT(!part.empty() && part.find(';') == std::string::npos);
    }
    return 0;
}
