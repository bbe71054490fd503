// Which files beside an application belong to it, beyond doubt: what another program may have made is nobody's.
#pragma once

#include "applications/Applications.h"
#include "applications/LeftoverTokens.h"
#include "desktop/DesktopEntries.h"
#include "scan/UserPlaces.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vellmoor {

/// Finds leftovers. It lists the layout's folders once and knows every installed application, so that none is
/// offered what belongs to another.
class LeftoverFinder {
public:
    /// `applications`: all removable ones; the other installed ones are read from the desktop entries and from the
    /// programs that can be started by name.
    LeftoverFinder(EngineContext& context, const std::vector<ApplicationMetadata>& applications);

    /// The leftovers of applications[index], folder after folder, without the application itself.
    [[nodiscard]] std::vector<Path> residualPaths(std::size_t index) const;

private:
    struct Child {
        Path path;
        LeftoverName name;
    };

    void collectForeignTokens();
    void listFolders();
    using Programs = std::map<std::string, std::vector<Path>>;
    [[nodiscard]] const Programs& programs() const;
    [[nodiscard]] bool mayBeSearched(const Path& folder) const;
    [[nodiscard]] bool startsOurs(const InstalledEntry& entry) const;
    [[nodiscard]] bool isInstalledElsewhere(const InstalledEntry& entry) const;
    [[nodiscard]] Child child(const Path& folder, const std::string& name, bool ofFlatpaks) const;
    [[nodiscard]] bool belongsTo(std::size_t index, const Child& child) const;
    [[nodiscard]] bool isNameOfProgram(std::size_t index, const LeftoverName& name, std::size_t length) const;
    [[nodiscard]] bool mustStay(const Child& child) const;
    void addLinks(const Path& application, std::vector<Path>& out) const;
    void addDottedNames(std::size_t index, std::vector<Path>& out) const;

    EngineContext& context_;
    const Platform& platform_;
    const AppLayout& layout_;
    const std::vector<ApplicationMetadata>& applications_;
    std::vector<Path> protected_; ///< what is never removed
    const UserPlaces& places_;
    std::vector<Path> realPaths_;         ///< of the applications
    std::vector<LeftoverTokens> tokens_;  ///< one per application
    std::vector<LeftoverTokens> foreign_; ///< of the installed applications that are not removable
    /// What can be started by name, by the forms of that name; read when a leftover bears an application's name.
    mutable std::optional<Programs> programs_;
    std::vector<Child> children_;
};

} // namespace vellmoor
