#include "Platform.h"
#include "desktop/DesktopEntries.h"
#include "desktop/EntryPrograms.h"
#include "desktop/ExecLine.h"
#include "disk/Paths.h"
#include "login/StartupEntries.h"

#include <algorithm>
#include <array>

namespace vellmoor {
namespace {

using Names = std::vector<std::string>;

bool contains(const Names& names, const std::string& name) {
    return std::ranges::find(names, name) != names.end();
}

/// Desktops whose own switch is the key X-GNOME-Autostart-enabled; others ignore it.
bool honoursGnomeSwitch(const Names& desktops) {
    static constexpr std::array honouring{"GNOME", "Unity", "Budgie", "X-Cinnamon", "MATE", "Pantheon"};
    return std::ranges::any_of(honouring, [&](const char* name) { return contains(desktops, name); });
}

bool isSwitchedOff(const KeyFile& file) {
    const std::string value = valueOf(file, entryGroup, "X-GNOME-Autostart-enabled");
    return value == "false" || value == "0";
}

bool startsAtLogin(const EngineContext& context, const InstalledEntry& entry) {
    return !entry.exec.empty() && isForDesktop(context, entry, context.layout().startup.desktops);
}

bool isSameProgram(const EngineContext& context, const std::string& a, const std::string& b) {
    if (a == b) {
        return true;
    }
    // Snaps are all links to one program, hence the names.
    if (displayName(a) != displayName(b)) {
        return false;
    }
    const std::optional<Path> first = programPath(context, a);
    const std::optional<Path> second = programPath(context, b);
    return first && second && context.platform().realPath(*first) == context.platform().realPath(*second);
}

} // namespace

std::optional<Path> entryForStartupItem(EngineContext& context, std::string_view label, const Names& words) {
    const std::vector<InstalledEntry>& entries = installedEntries(context);
    const auto first = [&](auto fits) -> std::optional<Path> {
        const auto found = std::ranges::find_if(
            entries, [&](const InstalledEntry& entry) { return !entry.hidden && !entry.shadowed && fits(entry); });
        return found == entries.end() ? std::nullopt : std::optional(found->path);
    };
    if (auto path = first([&](const InstalledEntry& entry) { return entry.id == label; })) {
        return path;
    }
    if (const std::string flatpak = flatpakApplication(words); !flatpak.empty()) {
        const auto byId = first([&](const InstalledEntry& entry) { return entry.id == flatpak; });
        return byId ? byId : first([&](const InstalledEntry& entry) { return entry.flatpakId == flatpak; });
    }
    const std::string program = execProgram(words);
    if (program.empty() || isLauncher(context, program)) {
        return std::nullopt;
    }
    return first([&](const InstalledEntry& entry) { return isSameProgram(context, entry.execProgram, program); });
}

std::optional<StartupFacts> autostartFacts(EngineContext& context, const Path& file) {
    const std::optional<KeyFile> keys = context.platform().keyFile(file);
    const std::optional<InstalledEntry> entry =
        keys ? desktopEntry(*keys, file.stem().string(), file) : std::optional<InstalledEntry>();
    if (!entry || entry->hidden) {
        return std::nullopt;
    }
    const std::vector<std::string>& desktops = context.layout().startup.desktops;
    if (honoursGnomeSwitch(desktops) && isSwitchedOff(*keys)) {
        return std::nullopt;
    }
    StartupFacts facts{.label = entry->id, .ownName = entry->name, .program = {}, .application = {}};
    if (!entry->execProgram.empty()) {
        facts.program = entry->execProgram;
    }
    const std::vector<std::string> words = execWords(entry->exec).value_or(std::vector<std::string>());
    facts.application = entryForStartupItem(context, facts.label, words);
    facts.startsAtLogin = startsAtLogin(context, *entry);
    return facts;
}

std::string unitNameEscape(std::string_view label) {
    static constexpr std::string_view digits = "0123456789abcdef";
    std::string out;
    for (const char c : label) {
        const bool isPlain = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == ':' ||
                             c == '_' || (c == '.' && !out.empty());
        if (isPlain) {
            out += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        out += {'\\', 'x', digits[byte >> 4U], digits[byte & 15U]};
    }
    return out;
}

} // namespace vellmoor
