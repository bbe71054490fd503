// What is never offered again, as the window sees it.
#include "StoreFixture.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace vellmoor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Path = std::filesystem::path;

/// A row whose paths are named.
CleanupItem rowAt(const std::string& title, const std::vector<Path>& paths,
                  CleanerModule module = CleanerModule::systemJunk) {
    CleanupItem item = row(module, title, {});
    for (const Path& path : paths) {
        item.targets.edit().push_back({.url = path, .bytes = 10, .files = 1, .isSelected = true});
        item.bytes += 10;
        ++item.files;
    }
    item.isSelected = !paths.empty();
    return item;
}

class StoreKeeps : public StoreFixture {
protected:
    void keepPaths(const std::vector<Path>& paths) {
        store->keep(paths);
        awaitWorkers();
    }
    [[nodiscard]] std::vector<Path> kept() const {
        std::vector<Path> paths;
        for (const KeptItem& item : store->keptItems()) {
            paths.push_back(item.url);
        }
        return paths;
    }
};

TEST_F(StoreKeeps, TheListIsReadWhenAskedFor) {
    EXPECT_THAT(store->keptItems(), IsEmpty());
    ASSERT_TRUE(service->keep({"/a", "/b"}));
    int told = 0;
    QObject::connect(store.get(), &CleanerStore::keptItemsChanged, [&] { ++told; });
    store->loadKept();
    awaitWorkers();
    EXPECT_THAT(kept(), ElementsAre("/a", "/b"));
    EXPECT_EQ(told, 1);
}

TEST_F(StoreKeeps, AKeptPathLeavesTheShownRowWithItsFigures) {
    scanned(CleanerModule::systemJunk, snapshotOf({rowAt("Caches", {"/c/one", "/c/two/inner", "/c/two"})}));
    keepPaths({"/c/two"});
    ASSERT_THAT(store->cleanupItems(), SizeIs(1));
    const CleanupItem& item = store->cleanupItems().front();
    EXPECT_THAT(item.targets, SizeIs(1));
    EXPECT_EQ(item.bytes, 10);
    EXPECT_EQ(item.files, 1);
    EXPECT_EQ(store->selectedBytes(CleanerModule::systemJunk), 10);
    EXPECT_THAT(kept(), ElementsAre("/c/two"));
    EXPECT_EQ(store->statusMessage(), "Kept. It is not offered again.");
}

TEST_F(StoreKeeps, ARowOfWhichAllIsKeptLeavesTheList) {
    scanned(CleanerModule::systemJunk, snapshotOf({rowAt("Caches", {"/c/one"}), rowAt("Logs", {"/l/one"})}));
    keepPaths({"/c/one"});
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("Logs"));
}

TEST_F(StoreKeeps, ThePathLeavesTheCachedResultsOfOtherModules) {
    scanned(CleanerModule::smartScan, snapshotOf({rowAt("Caches", {"/c/one"}), rowAt("Logs", {"/l/one"})}));
    keepPaths({"/c/one"});
    store->show(CleanerModule::systemJunk);
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("Logs"));
    store->show(CleanerModule::smartScan);
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("Logs"));
}

TEST_F(StoreKeeps, WhatHoldsTheKeptPathIsHeldBackUntilTheNextScan) {
    scanned(CleanerModule::systemJunk, snapshotOf({rowAt("Caches", {"/c/one", "/c/two"})}));
    keepPaths({"/c/two/inner"});
    const CleanupItem& item = store->cleanupItems().front();
    ASSERT_THAT(item.targets, SizeIs(2));
    EXPECT_TRUE(item.targets.front().mayGo());
    EXPECT_FALSE(item.targets.back().mayGo());
    EXPECT_FALSE(item.targets.back().isSelected);
    store->setTargetSelected(0, 1, true);
    EXPECT_FALSE(store->cleanupItems().front().targets.back().isSelected) << "its tick is disabled";
    store->setItemSelected(0, true);
    EXPECT_EQ(store->selectedBytes(CleanerModule::systemJunk), 10);
    EXPECT_EQ(store->cleanableBytes(CleanerModule::systemJunk), 10);
}

TEST_F(StoreKeeps, AKeptApplicationTakesItsLeftoversWithIt) {
    CleanupItem app = rowAt("Editor", {"/apps/Editor", "/home/left"}, CleanerModule::appUninstaller);
    app.appInfo = AppCleanupInfo{.appPath = "/apps/Editor"};
    scanned(CleanerModule::appUninstaller, snapshotOf({app}));
    keepPaths({"/apps/Editor"});
    EXPECT_THAT(store->cleanupItems(), IsEmpty());
}

TEST_F(StoreKeeps, AScanThatBeganBeforeDoesNotBringThePathBack) {
    const auto gate = startGatedScan(CleanerModule::systemJunk, snapshotOf({rowAt("Caches", {"/c/one", "/c/two"})}));
    store->keep({"/c/one"});
    processUntil([&] { return !store->keptItems().empty(); });
    gate->open();
    awaitWorkers();
    ASSERT_THAT(store->cleanupItems(), SizeIs(1));
    EXPECT_THAT(store->cleanupItems().front().targets, SizeIs(1));
    scanned(CleanerModule::systemJunk, snapshotOf({rowAt("Caches", {"/c/one"})}));
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("Caches")) << "the next scan knows the list itself";
}

TEST_F(StoreKeeps, WhatIsOfferedAgainIsToldToComeWithTheNextScan) {
    keepPaths({"/c/one"});
    store->offerAgain("/c/one");
    awaitWorkers();
    EXPECT_THAT(kept(), IsEmpty());
    EXPECT_EQ(store->statusMessage(), "The next scan offers one again.");
}

TEST_F(StoreKeeps, AFailureSaysWhyAndLeavesTheRows) {
    scanned(CleanerModule::systemJunk, snapshotOf({rowAt("Caches", {"/c/one"})}));
    service->refuseList("No space left on device");
    keepPaths({"/c/one"});
    EXPECT_EQ(store->actionFailure(), "No space left on device");
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("Caches"));
}

} // namespace
} // namespace vellmoor
