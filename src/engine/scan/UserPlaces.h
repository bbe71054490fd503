#pragma once

#include "layouts/RootPattern.h"
#include "scan/EngineContext.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace vellmoor {

/// The user's own folders (Documents, Downloads ...) as they are at the start of the call, and what they forbid: a
/// variable may make a cache folder of anything, so no rule is trusted to stay away from them.
class UserPlaces {
public:
    /// Those of this call; read when it first asks.
    static const UserPlaces& of(EngineContext& context);

    explicit UserPlaces(const EngineContext& context);

    /// Where Large Files looks, in its order: downloads, desktop, documents, videos, pictures. A folder that is the
    /// home folder or above it is switched off, and empty here.
    [[nodiscard]] const std::vector<Path>& everyday() const { return everyday_; }
    [[nodiscard]] const Path& downloads() const { return everyday_[0]; }
    [[nodiscard]] const Path& desktop() const { return everyday_[1]; }

    /// Whether `path` is the home folder or one of the user's folders, or holds one.
    [[nodiscard]] bool holdsUserFolder(const Path& path) const;
    /// Whether `path` is one of the user's folders or lies in one.
    [[nodiscard]] bool liesInUserFolder(const Path& path) const;
    /// Whether a folder that a variable names is what the variable is for. One that equals or holds the home folder or
    /// (another) base folder is not, nor one that lies in a user folder, nor a base folder in CONFIG or DATA, nor a
    /// tool's folder that holds a user folder.
    [[nodiscard]] bool isFit(const Path& folder, BaseOrigin origin) const;

private:
    [[nodiscard]] bool findFit(const Path& folder, BaseOrigin origin) const;
    /// A place in the form that it was named in and with all links resolved.
    using Forms = std::vector<Path>;
    [[nodiscard]] Forms formsOf(const Path& path) const;
    [[nodiscard]] Forms formsOfAll(const std::vector<Path>& paths) const;

    const Platform& platform_;
    BaseFolders bases_;
    std::vector<Path> everyday_;
    std::vector<Path> userFolders_; ///< in every form
    Forms home_;
    mutable std::map<std::pair<std::string, BaseOrigin>, bool>
        fit_; ///< what isFit() answered: many rules share a folder
};

} // namespace vellmoor
