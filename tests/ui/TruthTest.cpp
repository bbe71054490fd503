// What the window says is so: after a clean, in an empty result, of what is not listed.
#include "WindowFixture.h"
#include "texts/ByteCount.h"

namespace vellmoor {
namespace {

using TruthTest = WindowTest;
INSTANTIATE_IN_BOTH_LANGUAGES(TruthTest);

/// A scan of large files that found `further` more than it lists.
ScanSnapshot manyFiles(CleanerModule module, int further) {
    ScanSnapshot scan = sample::snapshot(module);
    const auto file = std::ranges::find(scan.cleanupItems, CleanerModule::largeFiles, &CleanupItem::module);
    for (int number = 0; number < further && file != scan.cleanupItems.end(); ++number) {
        CleanupItem item = *file;
        item.title = "more-" + std::to_string(number) + ".mkv";
        item.bytes = 300'000'000;
        item.targets.edit().front().url = "/home/anna/Videos/" + item.title;
        item.targets.edit().front().name = item.title;
        item.targets.edit().front().bytes = item.bytes;
        scan.furtherLargeFiles.push_back(item);
    }
    return scan;
}

TEST_P(TruthTest, TheScanAfterACleanLeavesThePageThatTheUserWentTo) {
    auto gate = std::make_shared<Gate>();
    service().onClean([gate](const std::vector<CleanupItem>&) {
        gate->pass();
        return sample::cleanReport();
    });
    openScanned(CleanerModule::systemJunk);
    askClean();
    ASSERT_TRUE(window().click(QStringLiteral("confirm.accept")));
    ASSERT_TRUE(window().click(QStringLiteral("sidebar.privacy")));
    gate->open();
    waitUntilIdle();
    EXPECT_EQ(service().scans().back(), CleanerModule::systemJunk);
    EXPECT_EQ(text("moduleTitle"), tr("隐私保护"));
    EXPECT_EQ(store().activeModule(), CleanerModule::privacy);
    EXPECT_TRUE(store().latestReport().has_value()) << "and its report is there";
}

TEST_P(TruthTest, ASwitchedLoginItemLeavesThePageThatTheUserWentTo) {
    auto gate = std::make_shared<Gate>();
    service().onDisable([gate](const StartupItem&) {
        gate->pass();
        return StartupActionResult{true, "done"};
    });
    openScanned(CleanerModule::performance);
    ASSERT_TRUE(window().click(QStringLiteral("startup.0.action")));
    ASSERT_TRUE(window().click(QStringLiteral("confirmStartup.accept")));
    ASSERT_TRUE(window().click(QStringLiteral("sidebar.trash")));
    gate->open();
    waitUntilIdle();
    EXPECT_EQ(text("moduleTitle"), tr("废纸篓"));
    EXPECT_EQ(text("headerTitle"), tr("尚未扫描此模块"));
}

TEST_P(TruthTest, AFailedReportStaysFailedWhileItsSheetCloses) {
    service().onClean([](const std::vector<CleanupItem>&) { return sample::partlyFailedReport(); });
    openScanned(CleanerModule::systemJunk);
    cleanConfirmed();
    const QString failed = window().main().model().report()->title();
    window().main().model().rescanReported();
    EXPECT_EQ(window().main().model().report()->title(), failed);
    waitUntilIdle();
}

TEST_P(TruthTest, AnEmptyResultIsASuccessWithoutAFigure) {
    service().onScan([](CleanerModule, const ProgressCallback&, const CancelToken&) { return ScanSnapshot(); });
    openScanned(CleanerModule::smartScan);
    EXPECT_EQ(text("headerTitle"), tr("未发现可处理项目"));
    EXPECT_EQ(text("ringUnit"), tr("无需清理"));
    EXPECT_EQ(window().main().model().scan()->ringNumber(), QString());
}

TEST_P(TruthTest, LoginItemsAreCountedNotCleaned) {
    service().onScan([](CleanerModule module, const ProgressCallback&, const CancelToken&) {
        ScanSnapshot scan = sample::snapshot(module);
        scan.cleanupItems.clear();
        return scan;
    });
    openScanned(CleanerModule::performance);
    EXPECT_EQ(text("headerTitle"), tr("%d 个启动项", 4));
}

TEST_P(TruthTest, LargeFilesThatAreNotListedAreCountedAndCanBeListed) {
    service().onScan(
        [](CleanerModule module, const ProgressCallback&, const CancelToken&) { return manyFiles(module, 1'993); });
    openScanned(CleanerModule::largeFiles);
    const int listed = window().main().model().largeFiles()->itemCount();
    EXPECT_EQ(text("list.counter"), tr("%d 个结果", std::string(listed == 7 ? "2,000" : "")));
    EXPECT_EQ(text("moreFiles").toStdString(), L::tr("另有 %d 个文件，共 %@", "1,993", "597.9 GB"));
    ASSERT_TRUE(window().click(QStringLiteral("listAll")));
    EXPECT_EQ(window().main().model().largeFiles()->itemCount(), 2'000);
    EXPECT_FALSE(isVisible("moreFiles"));
}

TEST_P(TruthTest, AFilterLooksAtEveryLargeFile) {
    service().onScan(
        [](CleanerModule module, const ProgressCallback&, const CancelToken&) { return manyFiles(module, 50); });
    openScanned(CleanerModule::largeFiles);
    LargeFileListModel& files = *window().main().model().largeFiles();
    files.setSearch(QStringLiteral("more-4"));
    EXPECT_EQ(files.itemCount(), 11);
    window().scan();
    EXPECT_EQ(files.itemCount(), 11) << "after a scan as well";
}

TEST_P(TruthTest, ARefusedQuitIsSaidOverThePage) {
    service().onQuit([](const MemoryApp&) { return QuitOutcome::NoResponse; });
    openScanned(CleanerModule::memoryOptimization);
    ASSERT_TRUE(window().click(QStringLiteral("memoryApp.1.quit")));
    ASSERT_TRUE(window().click(QStringLiteral("confirmQuit.accept")));
    EXPECT_TRUE(window().waitFor([this] { return isVisible("notice"); }, 10));
    EXPECT_EQ(text("notice.text"), tr("%@ 未响应退出请求，可在活动监视器中结束。", std::string("Blender")));
    waitUntilIdle();
}

TEST_P(TruthTest, AFailedSwitchCanBeDismissed) {
    service().onDisable([](const StartupItem&) { return StartupActionResult{false, "no"}; });
    openScanned(CleanerModule::performance);
    ASSERT_TRUE(window().click(QStringLiteral("startup.1.action")));
    ASSERT_TRUE(window().click(QStringLiteral("confirmStartup.accept")));
    waitUntilIdle();
    ASSERT_TRUE(window().click(QStringLiteral("startupFailure.close")));
    EXPECT_FALSE(isVisible("startupFailure"));
}

TEST_P(TruthTest, FilterAndOrderOfAModuleAreRemembered) {
    openScanned(CleanerModule::privacy);
    ASSERT_TRUE(window().click(QStringLiteral("filter.recommended")));
    EXPECT_EQ(desktop().memory["vmList.privacy"], "recommended given");
    desktop().memory["vmList.privacy"] = "selected name";
    openScanned(CleanerModule::privacy);
    EXPECT_EQ(window().main().model().items()->filter(), QStringLiteral("selected"));
    EXPECT_EQ(window().main().model().items()->order(), QStringLiteral("name"));
}

TEST_P(TruthTest, TheFiltersOfLargeFilesAreRemembered) {
    openScanned(CleanerModule::largeFiles);
    window().main().model().largeFiles()->setKind(static_cast<int>(LargeFileKindFilter::videos));
    window().main().model().largeFiles()->setOrder(QStringLiteral("name"));
    window().show(CleanerModule::trash);
    window().show(CleanerModule::largeFiles);
    EXPECT_EQ(desktop().memory["vmList.largeFiles"], "all name videos all");
    openScanned(CleanerModule::largeFiles);
    EXPECT_EQ(window().main().model().largeFiles()->kind(), static_cast<int>(LargeFileKindFilter::videos));
    EXPECT_EQ(window().main().model().largeFiles()->order(), QStringLiteral("name"));
    window().main().model().largeFiles()->showAll();
    EXPECT_EQ(desktop().memory["vmList.largeFiles"], "all name");
}

TEST_P(TruthTest, TheWindowsPlaceIsRemembered) {
    open();
    window().main().window().setFramePosition({30, 40});
    window().settle();
    window().main().window().hide();
    EXPECT_EQ(desktop().memory[std::string(placeSetting)], "30,40");
}

TEST_P(TruthTest, AfterACleanTheKeyboardIsSomewhere) {
    service().onClean([](const std::vector<CleanupItem>&) { return sample::cleanReport(); });
    openScanned(CleanerModule::systemJunk);
    cleanConfirmed();
    ASSERT_TRUE(window().click(QStringLiteral("result.done")));
    const QQuickItem* focused = window().main().window().activeFocusItem();
    ASSERT_NE(focused, nullptr);
    EXPECT_NE(focused, window().main().window().contentItem());
    EXPECT_TRUE(focused->isEnabled());
}

TEST_P(TruthTest, AfterAMenuTheKeyboardIsInItsList) {
    openScanned(CleanerModule::systemJunk);
    QQuickItem* list = window().item(QStringLiteral("cleanupList"));
    list->forceActiveFocus(Qt::TabFocusReason);
    window().press(Qt::Key_Menu);
    ASSERT_TRUE(isVisible("item.0.menu.copyPath"));
    window().press(Qt::Key_Escape);
    EXPECT_FALSE(isVisible("item.0.menu.copyPath"));
    EXPECT_TRUE(list->hasActiveFocus());
}

TEST_P(TruthTest, LoginItemsHaveTheKeysAndTheMenuOfEveryList) {
    openScanned(CleanerModule::performance);
    QQuickItem* list = window().item(QStringLiteral("startupList"));
    list->forceActiveFocus(Qt::TabFocusReason);
    window().press(Qt::Key_End);
    EXPECT_EQ(list->property("currentIndex").toInt(), list->property("count").toInt() - 1);
    window().press(Qt::Key_Home);
    window().press(Qt::Key_Enter);
    EXPECT_THAT(desktop().revealed, ::testing::ElementsAre("/home/anna/.config/autostart/Nextcloud.desktop"));
    window().press(Qt::Key_Menu);
    ASSERT_TRUE(window().click(QStringLiteral("startup.0.menu.openFolder")));
    EXPECT_THAT(desktop().folders, ::testing::ElementsAre("/home/anna/.config/autostart"));
}

TEST_P(TruthTest, TheQuestionBeforeACleanTellsTrashRemovalAndMemoryApart) {
    openScanned(CleanerModule::smartScan);
    // What the sample ticks: 1.4 GB of junk, 2.06 GB in the Trash, and memory, which no Trash takes.
    EXPECT_EQ(
        window().main().model().offer()->confirmationParts(),
        QStringList({tr("移到废纸篓：%@", std::string("1.4 GB")), tr("永久删除，无法恢复：%@", std::string("2.06 GB")),
                     tr("释放内存：%@", std::string("2.74 GB"))}));
}

TEST_P(TruthTest, MemoryIsToldApartAlsoWhenNothingGoesForGood) {
    openScanned(CleanerModule::smartScan);
    const auto& items = store().cleanupItems();
    for (std::size_t row = 0; row < items.size(); ++row) {
        if (items[row].module == CleanerModule::trash) {
            store().setItemSelected(static_cast<int>(row), false);
        }
    }
    EXPECT_FALSE(window().main().model().offer()->removesForGood());
    EXPECT_EQ(window().main().model().offer()->confirmationParts(),
              QStringList({tr("移到废纸篓：%@", std::string("1.4 GB")), tr("释放内存：%@", std::string("2.74 GB"))}));
}

TEST_P(TruthTest, WhatAllGoesToTheTrashNeedsNoFurtherLine) {
    openScanned(CleanerModule::systemJunk);
    EXPECT_EQ(window().main().model().offer()->confirmationParts(), QStringList());
}

TEST_P(TruthTest, ACleanTellsItsFiguresWholeAndItsPathBesideThem) {
    auto gate = std::make_shared<Gate>();
    service().setCleanProgress({.doneCount = 412,
                                .totalCount = 1204,
                                .doneBytes = 3'120'000'000,
                                .totalBytes = 8'400'000'000,
                                .current = "/home/anna/.cache/mesa_shader_cache/3f/0b7c1d2e9a"});
    service().onClean([gate](const std::vector<CleanupItem>&) {
        gate->pass();
        return sample::cleanReport();
    });
    openScanned(CleanerModule::systemJunk);
    window().resize({800, 560});
    askClean();
    ASSERT_TRUE(window().click(QStringLiteral("confirm.accept")));
    ASSERT_TRUE(window().waitFor([&] { return isVisible("currentPath"); }));
    EXPECT_EQ(text("currentPath"), QStringLiteral("/home/anna/.cache/mesa_shader_cache/3f/0b7c1d2e9a"));
    EXPECT_FALSE(window().item(QStringLiteral("statusMessage"))->property("truncated").toBool());
    gate->open();
    waitUntilIdle();
    EXPECT_FALSE(isVisible("currentPath"));
}

TEST_P(TruthTest, HeaderAndStatusTellTheSameOfTheLargeFiles) {
    service().onScan(
        [](CleanerModule module, const ProgressCallback&, const CancelToken&) { return manyFiles(module, 50); });
    openScanned(CleanerModule::largeFiles);
    window().main().model().largeFiles()->listAll();
    window().settle();
    const std::string all = byteCountText(store().cleanableBytes(CleanerModule::largeFiles));
    EXPECT_EQ(text("headerTitle"), tr("发现 %@ 可安全处理项目", all));
    EXPECT_EQ(text("statusMessage"), tr("扫描完成，发现 %@ 可清理空间", all));
}

} // namespace
} // namespace vellmoor
