#include "desktop/DesktopEntries.h"

#include "disk/Paths.h"
#include "scan/EngineContext.h"

#include <algorithm>
#include <array>
#include <future>
#include <set>
#include <span>
#include <system_error>

namespace vellmoor {
namespace {

constexpr std::string_view entryEnding = ".desktop";
/// Entries of menus with vendor folders lie two or three levels deep; more is no menu.
constexpr int deepestEntryFolder = 5;

bool isTrue(const KeyFile& file, std::string_view key) {
    const std::string value = valueOf(file, entryGroup, key);
    return value == "true" || value == "1";
}

/// The rule of the Desktop Entry Specification: the first name that either list holds decides.
bool isShownIn(const InstalledEntry& entry, const std::vector<std::string>& desktops) {
    for (const std::string& desktop : desktops) {
        if (std::ranges::find(entry.onlyShowIn, desktop) != entry.onlyShowIn.end()) {
            return true;
        }
        if (std::ranges::find(entry.notShowIn, desktop) != entry.notShowIn.end()) {
            return false;
        }
    }
    return entry.onlyShowIn.empty();
}

/// The value in the interface language; the system's own language plays no part.
std::string localizedValue(const KeyFile& file, std::string_view key) {
    static constexpr std::array chinese{"[zh_CN]", "[zh_Hans]", "[zh_SG]", "[zh]", ""};
    static constexpr std::array english{"[en_US]", "[en]", ""};
    const bool isChinese = L::language() == AppLanguage::chinese;
    const std::span<const char* const> suffixes =
        isChinese ? std::span<const char* const>(chinese) : std::span<const char* const>(english);
    for (const char* suffix : suffixes) {
        if (std::string value = valueOf(file, entryGroup, std::string(key) + suffix); !value.empty()) {
            return value;
        }
    }
    return {};
}

void collectEntries(const EngineContext& context, const Path& folder, const std::string& idPrefix, int depth,
                    std::vector<InstalledEntry>& out) {
    const auto children = context.platform().entries(folder);
    if (!children) {
        return;
    }
    for (const FolderEntry& child : *children) {
        const Path path = folder / child.name;
        if (child.isDirectory && !child.isSymlink && depth < deepestEntryFolder) {
            collectEntries(context, path, idPrefix + child.name + "-", depth + 1, out);
            continue;
        }
        if (!child.name.ends_with(entryEnding) || !(child.isRegularFile || child.isSymlink)) {
            continue;
        }
        const std::optional<KeyFile> file = context.platform().keyFile(path);
        if (!file || valueOf(*file, entryGroup, "Type") != "Application") {
            continue;
        }
        const std::string stem = child.name.substr(0, child.name.size() - entryEnding.size());
        if (auto entry = desktopEntry(*file, idPrefix + stem, path)) {
            out.push_back(std::move(*entry));
        }
    }
}

std::vector<InstalledEntry> allEntries(const EngineContext& context) {
    std::vector<InstalledEntry> all;
    std::set<std::string> ids;
    for (const Path& folder : context.layout().apps.entryFolders) {
        for (InstalledEntry& entry : entriesOfFolder(context, folder)) {
            entry.shadowed = !ids.insert(entry.id).second;
            all.push_back(std::move(entry));
        }
    }
    return all;
}

/// Those of a call.
struct KnownEntries {
    std::shared_future<std::vector<InstalledEntry>> ahead; ///< begun on another thread; not valid: it was not
    std::optional<std::vector<InstalledEntry>> entries;
};

} // namespace

std::optional<InstalledEntry> desktopEntry(const KeyFile& file, std::string id, const Path& path) {
    if (!file.contains(std::string(entryGroup))) {
        return std::nullopt;
    }
    InstalledEntry entry;
    entry.id = std::move(id);
    entry.path = path;
    entry.name = localizedValue(file, "Name");
    entry.unlocalizedName = valueOf(file, entryGroup, "Name");
    entry.exec = valueOf(file, entryGroup, "Exec");
    if (const auto words = execWords(entry.exec)) {
        entry.execProgram = execProgram(*words);
        entry.flatpakId = flatpakApplication(*words);
    }
    entry.tryExec = valueOf(file, entryGroup, "TryExec");
    entry.icon = localizedValue(file, "Icon");
    entry.noDisplay = isTrue(file, "NoDisplay");
    entry.hidden = isTrue(file, "Hidden");
    entry.onlyShowIn = listValue(valueOf(file, entryGroup, "OnlyShowIn"));
    entry.notShowIn = listValue(valueOf(file, entryGroup, "NotShowIn"));
    entry.categories = listValue(valueOf(file, entryGroup, "Categories"));
    return entry;
}

std::vector<InstalledEntry> entriesOfFolder(const EngineContext& context, const Path& folder) {
    std::vector<InstalledEntry> entries;
    collectEntries(context, folder, "", 0, entries);
    return entries;
}

const std::vector<InstalledEntry>& installedEntries(EngineContext& context) {
    KnownEntries& known = context.remembered<KnownEntries>();
    if (known.ahead.valid()) {
        return known.ahead.get();
    }
    return known.entries ? *known.entries : known.entries.emplace(allEntries(context));
}

void readEntriesAhead(EngineContext& context) {
    KnownEntries& known = context.remembered<KnownEntries>();
    if (known.ahead.valid() || known.entries) {
        return;
    }
    try {
        // The context waits for it before it goes.
        known.ahead = std::async(std::launch::async, [&context] { return allEntries(context); }).share();
    } catch (const std::system_error&) {
        known.ahead = {}; // no thread to be had: they are read when they are asked for
    }
}

bool isForDesktop(const EngineContext& context, const InstalledEntry& entry, const std::vector<std::string>& desktops) {
    return isShownIn(entry, desktops) && (entry.tryExec.empty() || programPath(context, entry.tryExec));
}

std::optional<Path> programPath(const EngineContext& context, std::string_view program) {
    const SystemLayout& layout = context.layout();
    const auto executable = [&](const Path& path) -> std::optional<Path> {
        const std::optional<Path> real = context.platform().realPath(path);
        const std::optional<FileFacts> facts = real ? context.platform().facts(*real) : std::nullopt;
        const bool found = facts && facts->isRegularFile && context.platform().isExecutable(path);
        return found ? std::optional(path) : std::nullopt;
    };
    if (program.starts_with('/')) {
        return executable(placedProgram(layout, program));
    }
    if (program.empty() || program.find('/') != std::string_view::npos) {
        return std::nullopt;
    }
    for (const Path& folder : layout.apps.programPath) {
        if (auto path = executable(folder / program)) {
            return path;
        }
    }
    return std::nullopt;
}

Path placedProgram(const SystemLayout& layout, std::string_view program) {
    return placed(lexicallyStandardized(program), layout.home, layout.root);
}

} // namespace vellmoor
