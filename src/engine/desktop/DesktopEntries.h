// Desktop entries: the files through which Linux desktops know the installed applications.
#pragma once

#include "Platform.h"
#include "desktop/ExecLine.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor {

class EngineContext;
struct SystemLayout;

/// The group of an entry file that describes the entry.
inline constexpr std::string_view entryGroup = "Desktop Entry";

/// One desktop entry. Keys that the file lacks are empty.
struct InstalledEntry {
    std::string id; ///< desktop-file ID without ".desktop"
    Path path;
    std::string name;            ///< in the interface language, else as it stands without a language
    std::string unlocalizedName; ///< as it stands without a language
    std::string exec;
    std::string execProgram; ///< the program that `exec` starts, as it is written there; see execProgram()
    std::string tryExec;
    std::string icon;
    bool noDisplay = false;
    bool hidden = false;
    std::vector<std::string> onlyShowIn;
    std::vector<std::string> notShowIn;
    std::vector<std::string> categories;
    std::string flatpakId; ///< of the Flatpak that `exec` runs
    bool shadowed = false; ///< an earlier folder holds an entry of the same ID, which desktops use instead
};

/// Every application entry of the layout's folders, the user's folders first; read once per context.
const std::vector<InstalledEntry>& installedEntries(EngineContext& context);
/// Begins to read them on a thread of its own, while the scan does something else.
void readEntriesAhead(EngineContext& context);

/// The application entries of one folder and the folders below it. Broken files and other types of entries are
/// left out.
std::vector<InstalledEntry> entriesOfFolder(const EngineContext& context, const Path& folder);

/// The record of a parsed entry file; nothing without the group "Desktop Entry". The type is not looked at.
std::optional<InstalledEntry> desktopEntry(const KeyFile& file, std::string id, const Path& path);

/// Whether a desktop of these names, the most specific first, shows or starts the entry (Desktop Entry Specification,
/// OnlyShowIn and NotShowIn), and its program is there when it names one to try.
bool isForDesktop(const EngineContext& context, const InstalledEntry& entry, const std::vector<std::string>& desktops);

/// An absolute path as files name it, below the layout's root when it belongs neither to the home nor to the root.
Path placedProgram(const SystemLayout& layout, std::string_view program);
/// Where a program of an entry lies: an absolute path as it is, a bare name in the layout's program folders;
/// nothing when no such executable file exists.
std::optional<Path> programPath(const EngineContext& context, std::string_view program);

} // namespace vellmoor
