// From the sheet that lists every path to the Trash.
#include "Journey.h"

#include <gmock/gmock.h>

namespace vellmoor::journey {
namespace {

using ::testing::HasSubstr;

constexpr std::string_view caches = "用户缓存";
constexpr std::string_view logs = "系统日志";

const QString sheet = QStringLiteral("detailsList");

class DetailSheetJourney : public JourneyInEachLanguage {
protected:
    DetailSheetJourney() {
        makeFile(".cache/thumbnails/large/a.png", 300'000);
        makeFile(".cache/player/b", 200'000);
        makeFile(".cache/keep-me/c", 100'000);
        makeFile(".local/state/app/session.log", 50'000);
        makeFile(".npm/_cacache/index", 400'000); // a cautious row, never ticked by itself
        makeFile("Documents/letter.txt", 5'000);
    }
    void openSheet() {
        open();
        show(CleanerModule::systemJunk);
        scan();
        click(QStringLiteral("previewButton"));
        waitFor("the sheet", [&] { return isShown(sheet); });
    }
};
IN_BOTH_LANGUAGES(DetailSheetJourney);

TEST_P(DetailSheetJourney, WhatIsUntickedInTheSheetStaysAndTheRestCanBeRestored) {
    openSheet();
    const QString keep = row(L::tr(caches), "keep-me") + QStringLiteral(".toggle");
    EXPECT_TRUE(isTicked(keep, sheet));
    const QString before = textOf(QStringLiteral("details.summary"));
    click(keep, sheet);
    waitFor("the tick to go", [&] { return !isTicked(keep, sheet); });
    EXPECT_NE(textOf(QStringLiteral("details.summary")), before);
    click(QStringLiteral("details.done"));
    EXPECT_FALSE(isShown(sheet));

    clean();
    EXPECT_TRUE(isTrashed("thumbnails"));
    EXPECT_TRUE(isTrashed("player"));
    EXPECT_TRUE(isTrashed("session.log"));
    EXPECT_THAT(textOfFile(".local/share/Trash/info/player.trashinfo"),
                HasSubstr("Path=" + (home() / ".cache/player").string() + "\n"));
    EXPECT_FALSE(has(".cache/player"));
    EXPECT_FALSE(has(".local/state/app/session.log"));
    EXPECT_TRUE(has(".cache/keep-me/c"));
    EXPECT_TRUE(has(".npm/_cacache/index"));
    EXPECT_TRUE(has("Documents/letter.txt"));

    EXPECT_EQ(textOf(QStringLiteral("result.title")), tr("清理完成"));
    EXPECT_EQ(valueOf(QStringLiteral("result.processed")), tr("%d 项", 3));
    EXPECT_EQ(valueOf(QStringLiteral("result.failed")), tr("%d 项", 0));
    EXPECT_EQ(valueOf(QStringLiteral("result.share")), tr("%d/%d 个路径", 3, 3));
    EXPECT_TRUE(isShown(QStringLiteral("result.noFailures")));
    click(QStringLiteral("result.done"));
    EXPECT_FALSE(store->latestReport().has_value());
    EXPECT_LT(listed(L::tr(caches), "player"), 0) << "the page shows what the disk holds after the clean";
    EXPECT_GE(listed(L::tr(caches), "keep-me"), 0);
}

TEST_P(DetailSheetJourney, NothingTickedIsNothingToClean) {
    const auto before = tree();
    openSheet();
    click(QStringLiteral("details.deselectAll"));
    click(QStringLiteral("details.close"));
    waitFor("the button to rest", [&] { return !find(QStringLiteral("cleanButton"))->isEnabled(); });
    EXPECT_EQ(tree(), before);
}

TEST_P(DetailSheetJourney, SelectAllReachesTheCautiousRowAsWell) {
    openSheet();
    click(QStringLiteral("details.selectAll"));
    const QString line = row(L::tr(logs), "session.log") + QStringLiteral(".toggle");
    click(line, sheet);
    waitFor("the tick to go", [&] { return !isTicked(line, sheet); });
    click(QStringLiteral("details.done"));
    clean();
    EXPECT_FALSE(has(".cache/keep-me"));
    EXPECT_TRUE(isTrashed("_cacache"));
    EXPECT_TRUE(has(".local/state/app/session.log"));
    EXPECT_TRUE(has("Documents/letter.txt"));
    EXPECT_EQ(store->latestReport()->failedCount, 0);
}

} // namespace
} // namespace vellmoor::journey
