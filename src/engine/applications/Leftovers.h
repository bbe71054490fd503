// Which files beside an application belong to it.
#pragma once

#include "applications/Applications.h"
#include "applications/DesktopEntries.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor {

/// By what the leftovers of an application are recognised; all in lower case.
struct LeftoverTokens {
    std::string exactIdentifier; ///< as it is written; empty: none
    std::string identifier;      ///< a dotted one; empty: none
    /// The display name, and an identifier without a dot, as letters and digits only; none has under 4 characters.
    std::vector<std::string> names;
};

LeftoverTokens leftoverTokens(const Platform& platform, const std::optional<std::string>& identifier,
                              std::string_view displayName);

/// Finds leftovers. It lists the layout's folders once and knows every installed application, so that none is
/// offered what belongs to another.
class LeftoverFinder {
public:
    /// `applications`: all removable ones; the other installed ones are read from the desktop entries.
    LeftoverFinder(EngineContext& context, const std::vector<ApplicationMetadata>& applications);

    /// The leftovers of applications[index], folder after folder, without the application itself.
    [[nodiscard]] std::vector<Path> residualPaths(std::size_t index) const;

private:
    struct Child {
        Path path;
        std::string name;
        std::string lower; ///< the name in lower case
        std::string plain; ///< the name without extension, letters and digits only
        bool exactIdentifier = false;
    };
    /// How well a name fits an application: by identifier before by name, a longer token before a shorter one.
    struct Match {
        bool byIdentifier = false;
        std::size_t length = 0;

        auto operator<=>(const Match&) const = default;
    };

    void listFolders();
    void collectForeignTokens();
    [[nodiscard]] bool startsOurs(const InstalledEntry& entry) const;
    [[nodiscard]] bool isInstalledElsewhere(const InstalledEntry& entry) const;
    [[nodiscard]] Child child(const Path& folder, const std::string& name, bool exactIdentifier) const;
    [[nodiscard]] static std::optional<Match> match(const Child& child, const LeftoverTokens& tokens);
    [[nodiscard]] bool belongsTo(std::size_t index, const Child& child) const;
    [[nodiscard]] bool mustStay(const Child& child) const;
    void addLinks(const Path& application, std::vector<Path>& out) const;
    void addDottedNames(std::size_t index, std::vector<Path>& out) const;

    EngineContext& context_;
    const Platform& platform_;
    const AppLayout& layout_;
    const std::vector<ApplicationMetadata>& applications_;
    std::vector<Path> realPaths_;         ///< of the applications
    std::vector<LeftoverTokens> tokens_;  ///< one per application
    std::vector<LeftoverTokens> foreign_; ///< of the installed applications that are not removable
    std::vector<Child> children_;
};

} // namespace vellmoor
