#pragma once

#include "applications/DesktopEntries.h"
#include "scan/EngineContext.h"

#include <map>
#include <string>
#include <vector>

namespace vellmoor {

/// A program that only runs others, such as a shell: no application is known by it, and two entries that start it need
/// not be the same application.
bool isLauncher(const EngineContext& context, const Path& program);

/// The installed entries by ID, by file and by the program that they start. Entries that their owner deleted, or
/// that an earlier folder replaces, are none. A visible entry goes before one that is not shown in menus.
class EntryPrograms {
public:
    explicit EntryPrograms(EngineContext& context);

    [[nodiscard]] const InstalledEntry* byId(const std::string& id) const;
    [[nodiscard]] const InstalledEntry* byFile(const Path& file) const;
    /// The entry that starts this program, or one that lies in a folder around it that is not shared by many
    /// applications. `program` has its links resolved.
    [[nodiscard]] const InstalledEntry* byProgram(const Path& program) const;

private:
    using Index = std::map<std::string, const InstalledEntry*>;

    void addProgram(const EngineContext& context, const InstalledEntry& entry, const std::string& written);
    [[nodiscard]] static const InstalledEntry* find(const Index& index, const std::string& key);

    Index byId_;
    Index byFile_;
    Index byProgram_;
    Index byFolder_;
};

} // namespace vellmoor
