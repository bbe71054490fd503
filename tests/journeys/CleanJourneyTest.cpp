#include "Journey.h"

#include <gmock/gmock.h>

namespace vellmoor::journey {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

constexpr auto trash = ".local/share/Trash";

class CleanJourney : public Journey {
protected:
    void unfold(const std::string& title) {
        click(row(title) + QStringLiteral(".expand"));
        waitFor("the paths", [&] { return isShown(row(title) + QStringLiteral(".target.0")); });
    }
};

TEST_F(CleanJourney, WhatIsTickedGoesToTheTrashAndWhatIsNotStaysThenTheTrashIsEmptied) {
    makeFile(".cache/thumbnails/large/a.png", 300'000);
    makeFile(".cache/player/b", 200'000);
    makeFile(".cache/keep-me/c", 100'000);
    makeFile(".local/state/app/session.log", 50'000);
    makeFile("Downloads/old.deb", 80'000, 20);
    makeFile("Documents/letter.txt", 5'000);
    makeFile(".config/settings.ini", 100);

    open();
    scan();
    EXPECT_EQ(store->activeModule(), CleanerModule::smartScan);
    ASSERT_GE(listed("User Caches"), 0);
    unfold("User Caches");
    click(row("User Caches", "keep-me") + QStringLiteral(".toggle"));
    waitFor("the tick to go", [&] {
        const auto items = store->items(CleanerModule::smartScan);
        const auto& targets = items.at(static_cast<std::size_t>(listed("User Caches"))).targets;
        return !targets.at(static_cast<std::size_t>(listed("User Caches", "keep-me"))).isSelected;
    });

    clean();
    EXPECT_EQ(store->latestReport()->failedCount, 0);
    EXPECT_EQ(store->latestReport()->removedCount, 3);
    EXPECT_TRUE(isTrashed("thumbnails"));
    EXPECT_TRUE(isTrashed("player"));
    EXPECT_TRUE(isTrashed("session.log"));
    EXPECT_FALSE(has(".cache/player"));
    EXPECT_TRUE(has(".cache/keep-me/c"));
    EXPECT_TRUE(has("Downloads/old.deb")) << "a cautious row is never ticked by itself";
    EXPECT_TRUE(has("Documents/letter.txt"));
    EXPECT_TRUE(has(".config/settings.ini"));
    EXPECT_TRUE(isShown(QStringLiteral("result.title")));
    click(QStringLiteral("result.done"));
    waitFor("the sheet to close", [&] { return !store->latestReport().has_value(); });

    std::string output;
    ASSERT_EQ(run("dbus-run-session -- gio trash --restore trash:///player", &output), 0) << output;
    EXPECT_TRUE(has(".cache/player/b"));
    EXPECT_FALSE(has(fs::path(trash) / "info/player.trashinfo"));

    makeText(fs::path(trash) / "directorysizes", "300000 1 thumbnails\n");
    show(CleanerModule::trash);
    scan();
    ASSERT_EQ(listed("User Trash"), 0);
    EXPECT_FALSE(store->items(CleanerModule::trash).front().isSelected) << "what a clean put there can be put back";
    click(QStringLiteral("item.0.toggle"));
    waitFor("the tick", [&] { return store->selectedBytes(CleanerModule::trash) > 0; });
    clean();
    EXPECT_EQ(store->latestReport()->failedCount, 0);
    EXPECT_TRUE(fs::is_empty(home() / trash / "files"));
    EXPECT_TRUE(fs::is_empty(home() / trash / "info"));
    std::string sizes;
    run("cat " + (home() / trash / "directorysizes").string(), &sizes);
    EXPECT_THAT(sizes, Not(HasSubstr("thumbnails")));
    EXPECT_TRUE(has(".cache/player/b"));
    EXPECT_TRUE(has(".cache/keep-me/c"));
}

TEST_F(CleanJourney, CancellingTheConfirmationChangesNothing) {
    makeFile(".cache/player/b", 200'000);
    open();
    show(CleanerModule::systemJunk);
    scan();
    askClean();
    click(QStringLiteral("confirm.cancel"));
    EXPECT_FALSE(store->isCleaning());
    EXPECT_FALSE(store->latestReport().has_value());
    EXPECT_TRUE(has(".cache/player/b"));
    EXPECT_FALSE(has(trash));
}

} // namespace
} // namespace vellmoor::journey
