#include "login/StartupMasks.h"

#include "Platform.h"
#include "desktop/DesktopEntries.h"

#include <algorithm>

namespace vellmoor {
namespace {

/// What systemd takes for a unit that must not start (systemctl(1), "mask").
constexpr const char* masked = "/dev/null";

/// A value as key files write it (Desktop Entry Specification, "Possible value types").
std::string escapedValue(std::string_view value) {
    std::string out;
    for (const char c : value) {
        switch (c) {
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        case '\\':
            out += "\\\\";
            break;
        case ' ':
            out += out.empty() ? "\\s" : " ";
            break;
        default:
            out += c;
        }
    }
    return out;
}

std::string maskText(const std::string& name) {
    return "[Desktop Entry]\nType=Application\nName=" + escapedValue(name) + "\nHidden=true\nX-Vellmoor-Mask=true\n";
}

} // namespace

bool needsStartupMask(const EngineContext& context, const StartupFolders& folders, const Path& file) {
    return std::ranges::any_of(folders.takeoverFolders,
                               [&](const Path& folder) { return context.platform().exists(folder / file.filename()); });
}

bool isStartupMask(const Platform& platform, StartupKind kind, const Path& file) {
    switch (kind) {
    case StartupKind::LaunchAgent:
        break;
    case StartupKind::Autostart: {
        const std::optional<KeyFile> keys = platform.keyFile(file);
        return keys && valueOf(*keys, entryGroup, "X-Vellmoor-Mask") == "true";
    }
    case StartupKind::UserService:
        return platform.linkTarget(file) == Path(masked);
    }
    return false;
}

Outcome createStartupMask(const Platform& platform, StartupKind kind, const Path& file, const std::string& name) {
    return kind == StartupKind::UserService ? platform.createLink(file, masked)
                                            : platform.createFile(file, maskText(name));
}

} // namespace vellmoor
