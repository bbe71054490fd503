// What the tests of the history of cleans share.
#pragma once

#include "restore/RestoreFixture.h"

#include <gmock/gmock.h>

#include <string>

namespace vellmoor::test {

/// A clean that is cut off as by a kill, in the middle of its work.
struct Kill {};

class Recorded : public TakingBack {
protected:
    [[nodiscard]] Journal journal() const { return Journal(home.layout); }
    [[nodiscard]] PastClean onlyClean() const {
        const Past past = journal().read().value();
        EXPECT_THAT(past.cleans, ::testing::SizeIs(1));
        return past.cleans.at(0);
    }
    /// Cleans the row until the change number `count` is about to be made.
    void cleanUntil(std::size_t count, const CleanupItem& row) {
        home.platform.beforeChange = [this, count](Operation, const Path&) {
            if (home.platform.changes().size() == count) {
                throw Kill();
            }
        };
        EXPECT_THROW((void)cleaned(row), Kill);
        home.platform.beforeChange = nullptr;
    }
    [[nodiscard]] CleanupReport finished(const std::string& id) const {
        EngineContext context = home.context();
        return finishClean(context, id, {});
    }
    [[nodiscard]] CleanupReport goneForGood(const std::string& id) const {
        EngineContext context = home.context();
        return removeForGood(context, id, {});
    }
    /// An application and two things that it left behind, as the uninstaller lists them.
    [[nodiscard]] CleanupItem application() const {
        const Path body = home.text(isMac ? "Applications/Tool.app/x" : "Applications/Tool.AppImage", "program");
        CleanupItem item = shownRow(home,
                                    {isMac ? body.parent_path() : body, home.text(".config/tool/a", "1").parent_path(),
                                     home.text(".cache/tool/b", "2").parent_path()},
                                    CleanerModule::appUninstaller);
        item.title = "Tool";
        item.appInfo = AppCleanupInfo{.bundleIdentifier = "org.example.tool", .appPath = item.targets[0].url.native()};
        return item;
    }
};

} // namespace vellmoor::test
