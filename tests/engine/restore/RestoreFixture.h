// What the tests of taking back share.
#pragma once

#include "clean/CleaningFixture.h"
#include "history/HistoryList.h"
#include "history/Journal.h"
#include "restore/Restore.h"

#include <string>
#include <sys/stat.h>
#include <vector>

namespace vellmoor::test {

/// Permission bits; 0 for what is not there.
inline unsigned modeOf(const Path& path) {
    struct stat status{};
    return ::lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
}

/// A home in which things are cleaned and put back.
class TakingBack : public ::testing::TestWithParam<System> {
protected:
    EngineHome home{GetParam()};
    const TrashFolder trash = home.platform.homeTrash();
    const bool isMac = GetParam() == System::Mac;

    [[nodiscard]] Path trashed(const std::string& name) const { return trash.contents / name; }
    /// What a clean of `row` reports.
    [[nodiscard]] CleanupReport cleaned(const CleanupItem& row) const {
        return clean(home, std::vector<CleanupItem>{row});
    }
    /// Of paths as the scan saw them.
    [[nodiscard]] CleanupReport cleaned(const std::vector<Path>& paths) const { return cleaned(shownRow(home, paths)); }
    [[nodiscard]] RestoreReport back(const std::string& clean, const std::vector<std::size_t>& indices = {}) const {
        EngineContext context = home.context();
        return putBack(context, clean, indices, {});
    }
    [[nodiscard]] RestoreReport backFromTrash(const std::vector<Path>& places) const {
        EngineContext context = home.context();
        return putBackTrashed(context, places, {});
    }
    [[nodiscard]] History past() const {
        EngineContext context(home.platform, home.layout, std::chrono::system_clock::now());
        return history(context);
    }
    [[nodiscard]] std::vector<CleanupFate> fates(const CleanupReport& report) const {
        std::vector<CleanupFate> all;
        for (const CleanupOutcome& outcome : report.outcomes) {
            all.push_back(outcome.fate);
        }
        return all;
    }
};

} // namespace vellmoor::test
