#include "StandInTrash.h"

#include "Host.h"

#include <array>
#include <cctype>
#include <cstdio>
#include <ctime>
#include <iomanip>
#include <sstream>

namespace vellmoor::test {
namespace {

std::string localTime(const char* pattern) {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    std::ostringstream text;
    text << std::put_time(&local, pattern);
    return text.str();
}

std::string percentEncoded(const std::string& path) {
    std::string out;
    for (const char character : path) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x80 && (std::isalnum(byte) != 0 || std::string_view("/-_.~").contains(character))) {
            out += character;
        } else {
            std::array<char, 4> digits{};
            std::snprintf(digits.data(), digits.size(), "%%%02X", byte);
            out += digits.data();
        }
    }
    return out;
}

// "name", then "name 10.23.45.ext" and "name 10.23.45 2.ext" (macOS) or "name.2.ext" (Linux).
std::string candidate(System system, const Path& path, int attempt) {
    const std::string stem = path.stem().string();
    const std::string extension = path.extension().string();
    if (attempt == 1) {
        return path.filename().string();
    }
    if (system == System::Linux) {
        return stem + "." + std::to_string(attempt) + extension;
    }
    const std::string again = attempt == 2 ? "" : " " + std::to_string(attempt - 1);
    return stem + " " + localTime("%H.%M.%S") + again + extension;
}

Path noteOf(const TrashFolder& trash, const std::string& name) {
    return trash.folder / "info" / (name + ".trashinfo");
}

bool isTaken(System system, const TrashFolder& trash, const std::string& name) {
    const Platform& host = hostPlatform();
    return host.facts(trash.contents / name) || (system == System::Linux && host.facts(noteOf(trash, name)));
}

Outcome moveWithNote(System system, const Path& path, const TrashFolder& trash, const std::string& name) {
    if (system == System::Mac) {
        return hostPlatform().moveItem(path, trash.contents / name);
    }
    const Path note = noteOf(trash, name);
    const std::string text = "[Trash Info]\nPath=" + percentEncoded(path.string()) +
                             "\nDeletionDate=" + localTime("%Y-%m-%dT%H:%M:%S") + "\n";
    if (const Outcome written = hostPlatform().createFile(note, text); !written) {
        return written;
    }
    const Outcome moved = hostPlatform().moveItem(path, trash.contents / name);
    if (!moved) {
        (void)hostPlatform().removeFile(note); // the first cause is the one to tell
    }
    return moved;
}

} // namespace

Outcome moveIntoTrash(System system, const Path& path, const TrashFolder& trash) {
    for (const Path& folder : {trash.contents, system == System::Linux ? trash.folder / "info" : trash.contents}) {
        if (const Outcome made = hostPlatform().createFolder(folder); !made) {
            return made;
        }
    }
    for (int attempt = 1;; ++attempt) {
        const std::string name = candidate(system, path, attempt);
        const Outcome moved = moveWithNote(system, path, trash, name);
        if (moved || !isTaken(system, trash, name) || attempt == 1000) {
            return moved;
        }
    }
}

} // namespace vellmoor::test
