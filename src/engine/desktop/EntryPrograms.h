#pragma once

#include "desktop/DesktopEntries.h"
#include "scan/EngineContext.h"

#include <map>
#include <string>
#include <vector>

namespace vellmoor {

/// A program that only runs others, such as a shell: no application is known by it, and two entries that start it need
/// not be the same application.
bool isLauncher(const EngineContext& context, const Path& program);

/// The installed entries by ID, by file and by the program that they start. Entries that their owner deleted, or
/// that an earlier folder replaces, are none. Where several start one program, a visible entry goes before one that
/// is not shown in menus, and one that starts it as it is before one that starts a part of it (its settings).
/// A program that only runs others, such as a shell, stands for no entry. Programs are asked for with their links
/// resolved.
class EntryPrograms {
public:
    explicit EntryPrograms(EngineContext& context);

    [[nodiscard]] const InstalledEntry* byId(const std::string& id) const;
    [[nodiscard]] const InstalledEntry* byFile(const Path& file) const;
    /// The entry that starts this very file, a script too.
    [[nodiscard]] const InstalledEntry* byProgram(const Path& program) const;
    /// The entry whose program is a script of the same name: it stands for the binary that it runs.
    [[nodiscard]] const InstalledEntry* byScriptName(const Path& program) const;
    /// The entry whose program lies in a folder around this one that is not shared by many applications.
    [[nodiscard]] const InstalledEntry* byFolder(const Path& program) const;
    /// The visible entry that starts the same program as `entry`, if there is one; else `entry` itself.
    [[nodiscard]] const InstalledEntry* shown(const InstalledEntry* entry) const;

    /// Whether programs of several applications may lie below the folder.
    [[nodiscard]] bool isShared(const Path& folder) const;

private:
    using Index = std::map<std::string, const InstalledEntry*>;

    void addProgram(const InstalledEntry& entry, const std::string& written);
    [[nodiscard]] static const InstalledEntry* find(const Index& index, const std::string& key);

    EngineContext& context_;
    Index byId_;
    Index byFile_;
    Index byProgram_;
    Index byScriptName_;
    Index byFolder_;
    std::map<const InstalledEntry*, std::string> programs_; ///< of each entry, resolved
};

} // namespace vellmoor
