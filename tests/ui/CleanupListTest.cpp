// The lists: ticking, unfolding, filters, large files, applications.
#include "WindowFixture.h"

#include <QElapsedTimer>

namespace vellmoor {
namespace {

using CleanupListTest = WindowTest;
INSTANTIATE_IN_BOTH_LANGUAGES(CleanupListTest);

TEST_P(CleanupListTest, ATickTakesTheWholeCategory) {
    openScanned(CleanerModule::systemJunk);
    EXPECT_FALSE(isTicked("item.2.toggle"));
    ASSERT_TRUE(window().click(QStringLiteral("item.2.toggle")));
    EXPECT_TRUE(isTicked("item.2.toggle"));
    const CleanupItem item = store().cleanupItems().at(2);
    EXPECT_EQ(item.selectedBytes(), item.bytes);
}

TEST_P(CleanupListTest, TheSheetsListHasRowsOnlyWhileTheSheetIsOpen) {
    openScanned(CleanerModule::systemJunk);
    EXPECT_EQ(window().main().model().details()->rowCount(), 0);
    ASSERT_TRUE(window().click(QStringLiteral("previewButton")));
    EXPECT_GT(window().main().model().details()->rowCount(), window().main().model().items()->rowCount());
    window().press(Qt::Key_Escape);
    EXPECT_TRUE(window().waitFor([&] { return window().main().model().details()->rowCount() == 0; }));
}

TEST_P(CleanupListTest, UntickingACategoryLeavesNoPathTicked) {
    openScanned(CleanerModule::systemJunk);
    ASSERT_TRUE(window().click(QStringLiteral("item.0.toggle")));
    EXPECT_FALSE(isTicked("item.0.toggle"));
    EXPECT_THAT(store().cleanupItems().at(0).selectedTargets(), ::testing::IsEmpty());
}

TEST_P(CleanupListTest, UnfoldingShowsThePathsAndFoldingHidesThem) {
    openScanned(CleanerModule::systemJunk);
    EXPECT_FALSE(isVisible("item.0.target.0"));
    ASSERT_TRUE(window().click(QStringLiteral("item.0.expand")));
    EXPECT_TRUE(isVisible("item.0.target.2"));
    ASSERT_TRUE(window().click(QStringLiteral("item.0.expand")));
    EXPECT_FALSE(isVisible("item.0.target.0"));
}

TEST_P(CleanupListTest, APathsTickChangesTheSelectedSize) {
    openScanned(CleanerModule::systemJunk);
    const std::int64_t before = store().selectedBytes(CleanerModule::systemJunk);
    ASSERT_TRUE(window().click(QStringLiteral("item.0.expand")));
    ASSERT_TRUE(window().click(QStringLiteral("item.0.target.1.toggle")));
    EXPECT_FALSE(isTicked("item.0.target.1.toggle"));
    EXPECT_TRUE(isTicked("item.0.toggle"));
    EXPECT_EQ(store().selectedBytes(CleanerModule::systemJunk), before - 18'000'000);
}

TEST_P(CleanupListTest, AHalfTickedCategoryIsTickedWholeByAClick) {
    openScanned(CleanerModule::systemJunk);
    ASSERT_TRUE(window().click(QStringLiteral("item.0.expand")));
    ASSERT_TRUE(window().click(QStringLiteral("item.0.target.1.toggle")));
    ASSERT_TRUE(window().click(QStringLiteral("item.0.toggle")));
    EXPECT_EQ(store().cleanupItems().at(0).selectedTargets().size(), 3U);
}

TEST_P(CleanupListTest, ARowThatCannotBeCleanedShowsALockInsteadOfATick) {
    openScanned(CleanerModule::privacy);
    EXPECT_TRUE(isVisible("item.0.lock"));
    EXPECT_FALSE(isVisible("item.0.toggle"));
    EXPECT_FALSE(isVisible("item.1.lock"));
    EXPECT_TRUE(isVisible("item.1.toggle"));
}

TEST_P(CleanupListTest, APathOfALockedRowCannotBeTicked) {
    openScanned(CleanerModule::privacy);
    ASSERT_TRUE(window().click(QStringLiteral("item.0.expand")));
    EXPECT_FALSE(isEnabled("item.0.target.0.toggle"));
    window().click(QStringLiteral("item.0.target.0"));
    EXPECT_FALSE(store().cleanupItems().at(0).targets.at(0).isSelected);
}

TEST_P(CleanupListTest, TheRecommendedFilterShowsOnlySafeRows) {
    openScanned(CleanerModule::systemJunk);
    ASSERT_TRUE(window().click(QStringLiteral("filter.recommended")));
    EXPECT_TRUE(isVisible("item.1"));
    EXPECT_FALSE(isVisible("item.2"));
}

TEST_P(CleanupListTest, TheSelectedFilterDropsARowThatIsUnticked) {
    openScanned(CleanerModule::systemJunk);
    ASSERT_TRUE(window().click(QStringLiteral("filter.selected")));
    EXPECT_TRUE(isVisible("item.1"));
    ASSERT_TRUE(window().click(QStringLiteral("item.0.toggle")));
    EXPECT_TRUE(isVisible("item.0"));
    EXPECT_FALSE(isVisible("item.1"));
}

int countOf(QQuickItem& root, const char* type) {
    int count = QByteArray(root.metaObject()->className()).startsWith(type) ? 1 : 0;
    for (QQuickItem* child : root.childItems()) {
        count += countOf(*child, type);
    }
    return count;
}

TEST_P(CleanupListTest, TheFilePreviewMakesOnlyTheRowsThatItShows) {
    service().onScan([](CleanerModule module, const ProgressCallback&, const CancelToken&) {
        ScanSnapshot scan = sample::snapshot(module);
        const FileCandidate file = scan.fileCandidates.front();
        scan.fileCandidates.assign(10'000, file);
        return scan;
    });
    openScanned(CleanerModule::largeFiles);
    QQuickItem& content = *window().main().window().contentItem();
    EXPECT_GE(countOf(content, "FileCandidateRow"), 4);
    EXPECT_LE(countOf(content, "FileCandidateRow"), 8);
}

TEST_P(CleanupListTest, AnEmptyListSaysNoResults) {
    service().onScan([](CleanerModule, const ProgressCallback&, const CancelToken&) { return ScanSnapshot(); });
    openScanned(CleanerModule::systemJunk);
    EXPECT_EQ(text("emptyState"), tr("暂无结果"));
    EXPECT_EQ(text("statusMessage"), tr("未发现可处理项目"));
}

TEST_P(CleanupListTest, APathIsShownInTheFileManager) {
    openScanned(CleanerModule::systemJunk);
    ASSERT_TRUE(window().click(QStringLiteral("item.0.expand")));
    ASSERT_TRUE(window().click(QStringLiteral("item.0.target.2.reveal")));
    EXPECT_THAT(desktop().revealed, ::testing::ElementsAre("/home/anna/.cache/mesa_shader_cache"));
}

TEST_P(CleanupListTest, TheContextMenuOfAPathShowsItInTheFileManager) {
    openScanned(CleanerModule::systemJunk);
    ASSERT_TRUE(window().click(QStringLiteral("item.0.expand")));
    ASSERT_TRUE(window().click(QStringLiteral("item.0.target.0"), Qt::RightButton));
    EXPECT_EQ(text("item.0.target.0.menu.reveal"), tr("在 Finder 中显示"));
    ASSERT_TRUE(window().click(QStringLiteral("item.0.target.0.menu.reveal")));
    EXPECT_THAT(desktop().revealed, ::testing::ElementsAre("/home/anna/.cache/thumbnails"));
}

TEST_P(CleanupListTest, TheListWorksWithTheKeyboard) {
    openScanned(CleanerModule::systemJunk);
    window().item(QStringLiteral("cleanupList"))->forceActiveFocus(Qt::TabFocusReason);
    window().press(Qt::Key_Right);
    EXPECT_TRUE(isVisible("item.0.target.0"));
    window().press(Qt::Key_Down);
    window().press(Qt::Key_Space);
    EXPECT_FALSE(store().cleanupItems().at(0).targets.at(0).isSelected);
    window().press(Qt::Key_Return);
    EXPECT_THAT(desktop().revealed, ::testing::ElementsAre("/home/anna/.cache/thumbnails"));
    window().press(Qt::Key_Left);
    EXPECT_FALSE(isVisible("item.0.target.0"));
}

TEST_P(CleanupListTest, TenThousandPathsUnfoldWithoutDrawingThemAll) {
    service().onScan([](CleanerModule module, const ProgressCallback&, const CancelToken&) {
        ScanSnapshot scan;
        scan.cleanupItems = {sample::category(module, "A", CleanupRisk::safe, 10'000)};
        return scan;
    });
    openScanned(CleanerModule::systemJunk);
    ASSERT_TRUE(window().click(QStringLiteral("item.0.expand")));
    ASSERT_TRUE(window().click(QStringLiteral("item.0.toggle")));
    EXPECT_EQ(store().selectedBytes(CleanerModule::systemJunk), 10'000'000'000);
    const QQuickItem* list = window().item(QStringLiteral("cleanupList"));
    const auto rows = list->property("contentItem").value<QQuickItem*>()->childItems().size();
    EXPECT_LT(rows, 60);
    EXPECT_EQ(list->property("count").toInt(), 10'001);
}

TEST_P(CleanupListTest, BulkSelectionTakesExactlyWhatBothFiltersPass) {
    openScanned(CleanerModule::largeFiles);
    // The photo archive is ticked by hand: bulk selection of videos leaves it alone.
    ASSERT_TRUE(window().click(QStringLiteral("item.2.toggle")));
    window().main().model().largeFiles()->setKind(static_cast<int>(LargeFileKindFilter::videos));
    window().main().model().largeFiles()->setAge(static_cast<int>(LargeFileAgeFilter::thirtyDays));
    EXPECT_EQ(text("list.counter"), tr("1 个结果"));
    ASSERT_TRUE(window().click(QStringLiteral("selectFiltered")));
    EXPECT_EQ(text("list.selection"), tr("%d 个已选", 1));
    std::vector<std::string> selected;
    for (const CleanupItem& item : store().selectedItems(CleanerModule::largeFiles)) {
        selected.push_back(item.title);
    }
    EXPECT_THAT(selected,
                ::testing::UnorderedElementsAre("Holiday in Norway, uncut.mov",
                                                "photos-2019-2023-complete-family-archive-with-originals.tar.gz"));
    ASSERT_TRUE(window().click(QStringLiteral("deselectFiltered")));
    EXPECT_EQ(store().selectedItems(CleanerModule::largeFiles).size(), 1U);
}

TEST_P(CleanupListTest, TheKindIsPickedFromAList) {
    openScanned(CleanerModule::largeFiles);
    ASSERT_TRUE(window().click(QStringLiteral("kindFilter")));
    ASSERT_TRUE(window().click(QStringLiteral("kindFilter.3")));
    EXPECT_EQ(text("list.counter"), tr("%d 个结果", 2));
    EXPECT_EQ(window().item(QStringLiteral("kindFilter"))->property("displayText").toString(), tr("视频"));
}

TEST_P(CleanupListTest, AFileWithoutADateSaysUnknown) {
    openScanned(CleanerModule::largeFiles);
    CleanupListModel* files = window().main().model().largeFiles();
    const QModelIndex last = files->index(files->rowCount() - 1);
    EXPECT_EQ(files->data(last, CleanupListModel::ModifiedRole).toString(), tr("未知"));
}

TEST_P(CleanupListTest, ARunningApplicationSaysSoInItsStatusPill) {
    openScanned(CleanerModule::appUninstaller);
    const QQuickItem* running = window().item(QStringLiteral("item.1.status"));
    const QQuickItem* idle = window().item(QStringLiteral("item.0.status"));
    ASSERT_TRUE(running && idle);
    EXPECT_EQ(running->property("value").toString(), tr("运行中") + " · " + tr("请先退出"));
    EXPECT_EQ(idle->property("value").toString(), tr("可卸载"));
    EXPECT_EQ(text("list.counter"), tr("%d 个待卸载", 0));
}

} // namespace
} // namespace vellmoor
