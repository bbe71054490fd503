#pragma once

#include "scan/EngineContext.h"
#include "trash/Trash.h"
#include "trash/TrashSession.h"

#include <memory>
#include <optional>
#include <vector>

namespace vellmoor {

/// What lies in a Trash and goes for good. The Trash folders are those of this moment, not those of the scan.
class TrashedPaths {
public:
    /// By the system's rule.
    static std::unique_ptr<const TrashedPaths> of(const EngineContext& context);

    TrashedPaths() = default;
    TrashedPaths(const TrashedPaths&) = delete;
    TrashedPaths& operator=(const TrashedPaths&) = delete;
    virtual ~TrashedPaths() = default;

    struct Trashed {
        Path path; ///< as the Trash folder names it
        TrashFolder trash;
    };
    /// `path`, if it really lies in a Trash when links are resolved; `real` is the place where a removal would act.
    [[nodiscard]] virtual std::optional<Trashed> find(const Path& path, const Path& real) const = 0;
    /// Whether `path` is written as lying in a Trash; a folder on the way may have become a link.
    [[nodiscard]] virtual bool names(const Path& path) const = 0;
    /// The Trash folders that are known beforehand.
    [[nodiscard]] virtual std::vector<TrashFolder> folders() const { return {}; }
};

} // namespace vellmoor
