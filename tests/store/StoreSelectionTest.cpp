#include "StoreFixture.h"

#include <gmock/gmock.h>

#include <limits>
#include <random>

namespace vellmoor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();

class StoreSelection : public StoreFixture {
protected:
    void show(std::vector<CleanupItem> items) { scanned(CleanerModule::smartScan, snapshotOf(std::move(items))); }
    [[nodiscard]] const CleanupItem& shown(std::size_t index) const { return store->cleanupItems().at(index); }
    [[nodiscard]] std::vector<bool> ticks(std::size_t index) const {
        std::vector<bool> all;
        for (const CleanupTarget& target : shown(index).targets) {
            all.push_back(target.isSelected);
        }
        return all;
    }
};

CleanupItem uncleanable(const std::string& title) {
    CleanupItem item = row(CleanerModule::trash, title, {10}, false);
    item.isCleanable = false;
    item.risk = CleanupRisk::previewOnly;
    return item;
}

CleanupItem cautious(CleanerModule module, const std::string& title, std::initializer_list<std::int64_t> sizes) {
    CleanupItem item = row(module, title, sizes, false);
    item.risk = CleanupRisk::cautious;
    return item;
}

TEST_F(StoreSelection, ItemsOfSmartScanAreAll) {
    show({row(CleanerModule::trash, "A", {1}), row(CleanerModule::privacy, "B", {2})});
    EXPECT_THAT(titles(store->items(CleanerModule::smartScan)), ElementsAre("A", "B"));
}

TEST_F(StoreSelection, ItemsOfAModuleAreItsOwnInOrder) {
    show({row(CleanerModule::trash, "A", {1}), row(CleanerModule::privacy, "B", {2}),
          row(CleanerModule::trash, "C", {3})});
    EXPECT_THAT(titles(store->items(CleanerModule::trash)), ElementsAre("A", "C"));
}

TEST_F(StoreSelection, IndicesArePositionsInTheWholeArray) {
    show({row(CleanerModule::trash, "A", {1}), row(CleanerModule::privacy, "B", {2}),
          row(CleanerModule::trash, "C", {3})});
    EXPECT_THAT(store->itemIndices(CleanerModule::trash, CleanupFilter::all), ElementsAre(0, 2));
    EXPECT_THAT(store->itemIndices(CleanerModule::smartScan, CleanupFilter::all), ElementsAre(0, 1, 2));
}

TEST_F(StoreSelection, RecommendedIndicesAreCleanableAndSafe) {
    show({cautious(CleanerModule::trash, "A", {1}), row(CleanerModule::trash, "B", {2}, false), uncleanable("C")});
    EXPECT_THAT(store->itemIndices(CleanerModule::trash, CleanupFilter::recommended), ElementsAre(1));
}

TEST_F(StoreSelection, SelectedIndicesHaveTickedBytes) {
    show({row(CleanerModule::trash, "Ticked", {1}), row(CleanerModule::trash, "Unticked", {2}, false),
          row(CleanerModule::trash, "Empty", {0}), row(CleanerModule::privacy, "Elsewhere", {4})});
    EXPECT_THAT(store->itemIndices(CleanerModule::trash, CleanupFilter::selected), ElementsAre(0));
}

TEST_F(StoreSelection, CleanableBytesAreThoseOfCleanableRowsTickedOrNot) {
    show({row(CleanerModule::trash, "A", {100}), row(CleanerModule::trash, "B", {20}, false), uncleanable("C"),
          row(CleanerModule::privacy, "D", {3})});
    EXPECT_EQ(store->cleanableBytes(CleanerModule::trash), 120);
    EXPECT_EQ(store->cleanableBytes(CleanerModule::smartScan), 123);
    EXPECT_EQ(store->cleanableBytes(CleanerModule::largeFiles), 0);
}

TEST_F(StoreSelection, SelectedBytesAreThoseOfTickedPathsOfTickedCleanableRows) {
    CleanupItem partly = row(CleanerModule::trash, "Partly", {100, 20});
    partly.targets.edit().at(1).isSelected = false;
    CleanupItem locked = uncleanable("Locked");
    locked.isSelected = true;
    locked.targets.edit().front().isSelected = true;
    show({partly, locked, row(CleanerModule::trash, "Unticked", {7}, false), row(CleanerModule::privacy, "D", {3})});
    EXPECT_EQ(store->selectedBytes(CleanerModule::trash), 100);
    EXPECT_EQ(store->selectedBytes(CleanerModule::smartScan), 103);
    EXPECT_EQ(store->selectedBytes(CleanerModule::largeFiles), 0);
}

TEST_F(StoreSelection, SelectedItemsNeedATickedByte) {
    show({row(CleanerModule::trash, "Full", {1}), row(CleanerModule::trash, "Empty", {0, 0}),
          row(CleanerModule::trash, "Unticked", {5}, false), row(CleanerModule::trash, "No paths", {})});
    EXPECT_THAT(titles(store->selectedItems(CleanerModule::trash)), ElementsAre("Full"));
}

TEST_F(StoreSelection, SelectedItemsAreUnchangedUntickedPathsIncluded) {
    CleanupItem partly = row(CleanerModule::trash, "Partly", {100, 20});
    partly.targets.edit().at(1).isSelected = false;
    show({partly});
    const std::vector<CleanupItem> selected = store->selectedItems(CleanerModule::trash);
    ASSERT_EQ(selected.size(), 1U);
    EXPECT_EQ(selected.front().id, partly.id);
    EXPECT_EQ(selected.front().targets.size(), 2U);
}

TEST_F(StoreSelection, SumsOfBytesThatOverflowEndTheProgram) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(
        {
            show({row(CleanerModule::trash, "A", {most}), row(CleanerModule::privacy, "B", {1})});
            (void)store->selectedBytes(CleanerModule::smartScan);
        },
        "overflow");
}

TEST_F(StoreSelection, LimitationsAreTheDeniedHintsThatAffectTheModule) {
    ScanSnapshot snapshot;
    snapshot.permissionHints = {hint("Denied here", false, {CleanerModule::trash, CleanerModule::privacy}),
                                hint("Denied elsewhere", false, {CleanerModule::privacy}),
                                hint("Granted", true, {CleanerModule::trash})};
    scanned(CleanerModule::trash, snapshot);
    const std::vector<PermissionHint> limitations = store->permissionLimitations(CleanerModule::trash);
    ASSERT_EQ(limitations.size(), 1U);
    EXPECT_EQ(limitations.front().title, "Denied here");
}

TEST_F(StoreSelection, LimitationsOfSmartScanAreAllDeniedHints) {
    ScanSnapshot snapshot;
    snapshot.permissionHints = {hint("A", false, {CleanerModule::trash}), hint("B", false, {}), hint("C", true, {})};
    scanned(CleanerModule::trash, snapshot);
    EXPECT_EQ(store->permissionLimitations(CleanerModule::smartScan).size(), 2U);
}

TEST_F(StoreSelection, TickingARowWithoutATickedPathTicksAllItsPaths) {
    show({cautious(CleanerModule::systemJunk, "Developer Caches", {10, 20})});
    store->setItemSelected(0, true);
    EXPECT_TRUE(shown(0).isSelected);
    EXPECT_THAT(ticks(0), ElementsAre(true, true));
    EXPECT_EQ(store->selectedBytes(CleanerModule::systemJunk), 30);
}

TEST_F(StoreSelection, TickingAHalfTickedRowTicksAllItsPaths) {
    show({row(CleanerModule::trash, "Trash", {10, 20})});
    store->setTargetSelected(0, 0, false);
    store->setItemSelected(0, true);
    EXPECT_THAT(ticks(0), ElementsAre(true, true));
}

TEST_F(StoreSelection, UntickingARowUnticksAllItsPaths) {
    show({row(CleanerModule::trash, "Trash", {10, 20})});
    store->setItemSelected(0, false);
    EXPECT_FALSE(shown(0).isSelected);
    EXPECT_THAT(ticks(0), ElementsAre(false, false));
    EXPECT_EQ(store->selectedBytes(CleanerModule::trash), 0);
}

TEST_F(StoreSelection, TickingOnePathOfAnUntickedRowBringsNoOtherPathBack) {
    show({row(CleanerModule::trash, "Trash", {10, 20, 40})});
    store->setItemSelected(0, false);
    store->setTargetSelected(0, 1, true);
    EXPECT_THAT(ticks(0), ElementsAre(false, true, false));
    EXPECT_EQ(store->selectedBytes(CleanerModule::trash), 20);
}

TEST_F(StoreSelection, UntickingThePathsOneByOneUnticksTheRowWithTheLast) {
    show({row(CleanerModule::trash, "Trash", {10, 20})});
    store->setTargetSelected(0, 0, false);
    EXPECT_TRUE(shown(0).isSelected);
    store->setTargetSelected(0, 1, false);
    EXPECT_FALSE(shown(0).isSelected);
}

TEST_F(StoreSelection, TickingAPathTicksItsRow) {
    show({cautious(CleanerModule::trash, "Trash", {10, 20})});
    store->setTargetSelected(0, 1, true);
    EXPECT_TRUE(shown(0).isSelected);
    EXPECT_THAT(ticks(0), ElementsAre(false, true));
}

TEST_F(StoreSelection, ARowThatIsNotCleanableCannotBeTicked) {
    show({uncleanable("Locked")});
    store->setItemSelected(0, true);
    store->setTargetSelected(0, 0, true);
    store->setAllSelected(CleanerModule::trash, true);
    EXPECT_FALSE(shown(0).isSelected);
    EXPECT_THAT(ticks(0), ElementsAre(false));
}

TEST_F(StoreSelection, ARowWithoutPathsCanBeTickedAndSelectsNothing) {
    show({row(CleanerModule::trash, "No paths", {}, false)});
    store->setItemSelected(0, true);
    EXPECT_TRUE(shown(0).isSelected);
    EXPECT_THAT(store->selectedItems(CleanerModule::trash), IsEmpty());
}

TEST_F(StoreSelection, PositionsThatDoNotExistAreIgnored) {
    show({row(CleanerModule::trash, "Trash", {10})});
    store->setItemSelected(-1, false);
    store->setItemSelected(1, false);
    store->setTargetSelected(0, -1, false);
    store->setTargetSelected(0, 1, false);
    store->setTargetSelected(7, 0, false);
    EXPECT_EQ(store->selectedBytes(CleanerModule::trash), 10);
}

TEST_F(StoreSelection, BulkTicksTouchTheNamedRowsOnly) {
    show({cautious(CleanerModule::largeFiles, "A", {1}), cautious(CleanerModule::largeFiles, "B", {2}),
          cautious(CleanerModule::largeFiles, "C", {4})});
    store->setItemSelected(1, true);
    store->setItemsSelected({0, 2}, true);
    EXPECT_EQ(store->selectedBytes(CleanerModule::largeFiles), 7);
    store->setItemsSelected({0, 2}, false);
    EXPECT_EQ(store->selectedBytes(CleanerModule::largeFiles), 2);
}

TEST_F(StoreSelection, SelectAllTicksEveryPathOfTheModulesRowsOnly) {
    CleanupItem partly = row(CleanerModule::trash, "Partly", {10, 20});
    partly.targets.edit().at(0).isSelected = false;
    show({partly, row(CleanerModule::trash, "Unticked", {40}, false), cautious(CleanerModule::privacy, "Other", {80})});
    store->setAllSelected(CleanerModule::trash, true);
    EXPECT_EQ(store->selectedBytes(CleanerModule::smartScan), 70);
}

TEST_F(StoreSelection, DeselectAllUnticksEveryPathOfTheModulesRowsOnly) {
    show({row(CleanerModule::trash, "A", {10, 20}), row(CleanerModule::privacy, "Other", {80})});
    store->setAllSelected(CleanerModule::trash, false);
    EXPECT_THAT(ticks(0), ElementsAre(false, false));
    EXPECT_EQ(store->selectedBytes(CleanerModule::smartScan), 80);
}

/// What the sums over the shown rows must be.
ModuleTicks counted(const std::vector<CleanupItem>& items, CleanerModule module) {
    ModuleTicks sums;
    for (const CleanupItem& item : items) {
        if (!belongs(item, module)) {
            continue;
        }
        ++sums.rows;
        sums.recommendedRows += matches(CleanupFilter::recommended, item) ? 1 : 0;
        sums.cleanableBytes += item.cleanableBytes();
        if (item.selectedBytes() > 0) {
            ++sums.selectedRows;
            ++sums.selectedRowsByRisk.at(static_cast<std::size_t>(item.risk));
            sums.selectedPaths += item.selectedTargetCount();
            sums.selectedBytes += item.selectedBytes();
        }
    }
    return sums;
}

TEST_F(StoreSelection, SumsStayThoseOfTheRowsWhateverIsTicked) {
    CleanupItem contrary = row(CleanerModule::privacy, "Its paths are ticked, it is not", {7, 8}, true);
    contrary.isSelected = false;
    CleanupItem held = row(CleanerModule::trash, "One path stays", {30, 40}, false);
    held.targets.edit().at(1).heldBack = "kept";
    show({row(CleanerModule::trash, "A", {10, 0, 20}), held, uncleanable("C"), contrary,
          cautious(CleanerModule::privacy, "E", {5, 6}), row(CleanerModule::systemJunk, "Empty", {})});
    std::mt19937 random(1);
    const auto any = [&random](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
    for (int step = 0; step < 500; ++step) {
        switch (any(4)) {
        case 0:
            store->setItemSelected(any(7) - 1, any(2) == 0);
            break;
        case 1:
            store->setAllSelected(allCleanerModules.at(static_cast<std::size_t>(any(8))), any(2) == 0);
            break;
        default:
            store->setTargetSelected(any(6), any(4) - 1, any(2) == 0);
            break;
        }
        for (const CleanerModule module : allCleanerModules) {
            ASSERT_EQ(store->ticks(module), counted(store->cleanupItems(), module)) << step << rawValue(module);
        }
        for (int index = 0; index < 6; ++index) {
            ASSERT_EQ(store->rowTicks(index).selectedPaths,
                      shown(static_cast<std::size_t>(index)).selectedTargetCount());
        }
    }
}

TEST_F(StoreSelection, SumsAreThoseOfTheModuleThatIsShown) {
    scanned(CleanerModule::trash, snapshotOf({row(CleanerModule::trash, "A", {10})}));
    scanned(CleanerModule::privacy, snapshotOf({row(CleanerModule::privacy, "B", {3, 4})}));
    EXPECT_EQ(store->selectedBytes(CleanerModule::privacy), 7);
    EXPECT_EQ(store->selectedBytes(CleanerModule::trash), 0);
    store->setTargetSelected(0, 0, false);
    store->show(CleanerModule::trash);
    EXPECT_EQ(store->selectedBytes(CleanerModule::trash), 10);
    store->show(CleanerModule::privacy);
    EXPECT_EQ(store->selectedBytes(CleanerModule::privacy), 4);
}

TEST_F(StoreSelection, ChangesNameTheirRow) {
    show({row(CleanerModule::trash, "A", {10}), row(CleanerModule::trash, "B", {20, 30}), uncleanable("C")});
    std::vector<int> named;
    QObject::connect(store.get(), &CleanerStore::selectionChanged, store.get(),
                     [&named](int index) { named.push_back(index); });
    store->setItemSelected(1, false);
    store->setTargetSelected(1, 0, true);
    store->setItemSelected(2, true);
    store->setItemsSelected({0, 1}, true);
    EXPECT_THAT(named, ElementsAre(1, 1, 0, 1));
}

} // namespace
} // namespace vellmoor
