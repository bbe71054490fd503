#pragma once

#include "ProtectedPaths.h"
#include "clean/CleanRecord.h"
#include "clean/RunningOwners.h"
#include "clean/WorkProgress.h"
#include "done/CleanProgress.h"
#include "done/CleanupReport.h"
#include "keep/KeptPaths.h"
#include "plan/CleanPlan.h"
#include "scan/EngineContext.h"
#include "trash/TrashSession.h"
#include "trash/TrashedPaths.h"

#include <chrono>
#include <expected>
#include <memory>
#include <optional>
#include <string>

namespace vellmoor {

/// One clean: takes row after row of a plan and writes down what becomes of each target.
class CleanRun {
public:
    /// `settle` is the wait before the second memory reading. What a killed clean left in a Trash is put right at once.
    CleanRun(EngineContext& context, std::chrono::milliseconds settle, const CleanProgressCallback& progress);

    /// Every target of the plan that is a file goes into `record`, in order.
    CleanupReport run(const CleanPlan& plan, CleanRecord& record);

private:
    /// What became of one target, before it is counted.
    struct Answer {
        CleanupFate fate = CleanupFate::Removed;
        std::string reason;
        Path place;
        bool endsClean = false;
        std::string note;
        std::optional<FileIdentity> moved = {};
    };

    /// What is known of the folder of the target at hand: targets stand beside each other.
    struct Folder {
        Path named;
        std::optional<Path> real; ///< links resolved; nothing when it does not exist
        bool holdsFlatpaks = false;
    };
    /// One target on its way.
    struct Subject {
        const CleanPlan::Row& row;
        const CleanupTarget& target;
        Path path;                 ///< standardised
        std::optional<Path> place; ///< links above it resolved
    };

    const Folder& folderOf(const Path& path);
    Subject subject(const CleanPlan::Row& row, const CleanupTarget& target);
    void optimize(const CleanPlan::Row& row);
    void cleanRow(const CleanPlan::Row& row, CleanRecord& record, WorkProgress& progress);
    void finish(CleanRecord& record);
    [[nodiscard]] bool isInstalledAgain(const CleanPlan::Row& row) const;
    Answer remove(const CleanPlan::Row& row, const CleanupTarget& target);
    Answer removeExisting(const Subject& subject);
    Answer removeFlatpak(const Subject& subject);
    [[nodiscard]] std::optional<std::string> runningUser(const Subject& subject);
    /// What the list of kept paths says of a target, whatever its row says.
    [[nodiscard]] std::optional<Answer> keptBack(const Path& path) const;
    [[nodiscard]] std::optional<std::string> refusal(const Subject& subject) const;
    const CleanupOutcome& count(const CleanupTarget& target, Answer answer);
    void note(std::string line);
    void fail(std::string line);

    EngineContext& context_;
    const Platform& platform_;
    std::chrono::milliseconds settle_;
    const CleanProgressCallback& progress_;
    PathGuard guard_;
    std::expected<KeptPaths, std::string> kept_; ///< as it was when the current row began
    std::unique_ptr<const TrashedPaths> trashed_;
    std::unique_ptr<TrashSession> session_;
    RunningOwners owners_;
    std::optional<Folder> folder_;
    std::optional<std::string> rowKept_; ///< why the rest of the current row stays
    std::optional<std::chrono::steady_clock::time_point> askedApplication_;
    bool ended_ = false; ///< the disk takes nothing more
    CleanupReport report_;
};

} // namespace vellmoor
