// The login items page and the memory page.
#include "WindowFixture.h"

#include <algorithm>

namespace vellmoor {
namespace {

using PerformancePagesTest = WindowTest;
INSTANTIATE_IN_BOTH_LANGUAGES(PerformancePagesTest);

TEST_P(PerformancePagesTest, AnEnabledItemOffersDisableAndADisabledOneRestore) {
    openScanned(CleanerModule::performance);
    EXPECT_EQ(text("startup.0.action"), tr("禁用"));
    EXPECT_EQ(text("startup.0.status"), tr("已启用"));
    EXPECT_EQ(text("startup.3.action"), tr("恢复"));
    EXPECT_EQ(text("startup.3.status"), tr("已禁用"));
    EXPECT_EQ(text("list.counter"), tr("%d 个已启用", 3));
}

TEST_P(PerformancePagesTest, DisablingAsksFirst) {
    openScanned(CleanerModule::performance);
    ASSERT_TRUE(window().click(QStringLiteral("startup.1.action")));
    EXPECT_EQ(text("confirmStartup.message"),
              tr("禁用后会停止当前登录会话中的后台代理，并把配置移到 LaunchAgents.disabled。"));
    ASSERT_TRUE(window().click(QStringLiteral("confirmStartup.cancel")));
    EXPECT_THAT(service().disables(), ::testing::IsEmpty());
    ASSERT_TRUE(window().click(QStringLiteral("startup.1.action")));
    ASSERT_TRUE(window().click(QStringLiteral("confirmStartup.accept")));
    waitUntilIdle();
    ASSERT_EQ(service().disables().size(), 1U);
    EXPECT_EQ(service().disables().at(0).name, "KeePassXC");
}

TEST_P(PerformancePagesTest, AfterACancelledQuestionOfAnotherPageTheFirstClickCounts) {
    openScanned(CleanerModule::smartScan);
    window().show(CleanerModule::memoryOptimization);
    ASSERT_TRUE(window().click(QStringLiteral("memoryApp.0.quit")));
    ASSERT_TRUE(window().click(QStringLiteral("confirmQuit.cancel")));
    window().show(CleanerModule::performance);
    const QQuickItem* list = window().item(QStringLiteral("startupList"));
    ASSERT_NE(list, nullptr);
    EXPECT_LE(list->property("contentY").toDouble(), 0) << "the list begins with its first row";
    ASSERT_TRUE(window().click(QStringLiteral("startup.0.action")));
    EXPECT_TRUE(isVisible("confirmStartup.cancel"));
}

TEST_P(PerformancePagesTest, AFocusThatIsOutOfSightInItsListMovesThePageNoFurtherThanItGoes) {
    openScanned(CleanerModule::performance);
    window().resize({800, 560});
    window().settle();
    QQuickItem* page = window().item(QStringLiteral("startupList"));
    ASSERT_NE(page, nullptr);
    const double top = page->mapToScene(QPointF()).y();
    ASSERT_TRUE(window().click(QStringLiteral("startup.3.action")));
    ASSERT_TRUE(window().click(QStringLiteral("confirmStartup.cancel")));
    EXPECT_EQ(page->mapToScene(QPointF()).y(), top);
}

TEST_P(PerformancePagesTest, RestoringAsksFirst) {
    openScanned(CleanerModule::performance);
    ASSERT_TRUE(window().click(QStringLiteral("startup.3.action")));
    EXPECT_EQ(text("confirmStartup.message"), tr("恢复后会移回 LaunchAgents，并尝试重新加载该启动项。"));
    ASSERT_TRUE(window().click(QStringLiteral("confirmStartup.accept")));
    waitUntilIdle();
    ASSERT_EQ(service().enables().size(), 1U);
    EXPECT_EQ(service().enables().at(0).name, "Steam");
}

TEST_P(PerformancePagesTest, WhileAnItemChangesItsButtonRests) {
    auto gate = std::make_shared<Gate>();
    service().onDisable([gate](const StartupItem&) {
        gate->pass();
        return StartupActionResult{true, "done"};
    });
    openScanned(CleanerModule::performance);
    ASSERT_TRUE(window().click(QStringLiteral("startup.0.action")));
    ASSERT_TRUE(window().click(QStringLiteral("confirmStartup.accept")));
    EXPECT_FALSE(isEnabled("startup.0.action"));
    EXPECT_EQ(text("startupNote"), tr("正在更新启动项..."));
    gate->open();
    waitUntilIdle();
    EXPECT_EQ(text("startupNote"), tr("禁用后会移到 LaunchAgents.disabled，可随时恢复"));
    EXPECT_TRUE(isEnabled("startup.0.action"));
}

TEST_P(PerformancePagesTest, AFailedChangeIsShownUntilTheUserGoesOn) {
    const std::string reason = L::tr("禁用 %@ 失败：%@", "KeePassXC", "Permission denied");
    service().onDisable([reason](const StartupItem&) { return StartupActionResult{false, reason}; });
    openScanned(CleanerModule::performance);
    EXPECT_FALSE(isVisible("startupFailure"));
    ASSERT_TRUE(window().click(QStringLiteral("startup.1.action")));
    ASSERT_TRUE(window().click(QStringLiteral("confirmStartup.accept")));
    waitUntilIdle();
    EXPECT_TRUE(isVisible("startupFailure"));
    EXPECT_EQ(text("startupFailure.text"), QString::fromStdString(reason));
    ASSERT_TRUE(window().click(QStringLiteral("refreshStartup")));
    waitUntilIdle();
    EXPECT_FALSE(isVisible("startupFailure"));
}

TEST_P(PerformancePagesTest, AFailedChangeLeavesTheListAndTheKeyboardWhereTheyAre) {
    service().onDisable([](const StartupItem&) { return StartupActionResult{false, "no"}; });
    openScanned(CleanerModule::performance);
    window().resize({800, 560});
    window().settle();
    const QQuickItem* list = window().item(QStringLiteral("startupList"));
    ASSERT_NE(list, nullptr);
    const double before = list->property("contentY").toDouble();
    ASSERT_TRUE(window().click(QStringLiteral("startup.1.action")));
    ASSERT_TRUE(window().click(QStringLiteral("confirmStartup.accept")));
    waitUntilIdle();
    window().settle();
    EXPECT_NEAR(list->property("contentY").toDouble(), before, 2); // its margin
    const QQuickItem* focused = window().main().window().activeFocusItem();
    ASSERT_NE(focused, nullptr);
    EXPECT_EQ(focused->objectName(), QStringLiteral("startup.1"));
}

TEST_P(PerformancePagesTest, AnItemIsShownInTheFileManager) {
    openScanned(CleanerModule::performance);
    ASSERT_TRUE(window().click(QStringLiteral("startup.0.reveal")));
    EXPECT_THAT(desktop().revealed, ::testing::ElementsAre("/home/anna/.config/autostart/Nextcloud.desktop"));
}

TEST_P(PerformancePagesTest, TheDesktopsOwnSettingsCanBeOpened) {
    openScanned(CleanerModule::performance);
    ASSERT_TRUE(window().click(QStringLiteral("loginItemsSettings")));
    EXPECT_THAT(desktop().asked, ::testing::ElementsAre("loginItems"));
}

TEST_P(PerformancePagesTest, TheMemoryPageTellsTheTotalAndThePressure) {
    openScanned(CleanerModule::memoryOptimization);
    EXPECT_EQ(text("memoryTotal"), tr("总内存 %@", std::string("16 GB")));
    EXPECT_EQ(text("pressure"), tr("偏高"));
}

TEST_P(PerformancePagesTest, BeforeAScanTheMemoryPageMakesNoFigureUp) {
    open();
    window().show(CleanerModule::memoryOptimization);
    const MemoryModel& memory = *window().main().model().memory();
    EXPECT_EQ(text("pressure"), QString());
    for (const QString& figure : {memory.usageText(), memory.used(), memory.available(), memory.reclaimable()}) {
        EXPECT_EQ(figure, QStringLiteral("--"));
    }
}

TEST_P(PerformancePagesTest, RowsOfAnotherModuleNeverReachTheMemoryPage) {
    // A page that makes all its rows at once was given thousands of another module's while it was being left.
    service().onScan([](CleanerModule module, const ProgressCallback&, const CancelToken&) {
        ScanSnapshot scan = sample::snapshot(module);
        if (module == CleanerModule::trash) {
            scan.cleanupItems.assign(10'000, sample::category(module, "Trash", CleanupRisk::safe, 1));
        }
        return scan;
    });
    openScanned(CleanerModule::trash);
    window().show(CleanerModule::memoryOptimization);
    window().scan();
    CleanupListModel& rows = *window().main().model().memoryItems();
    int most = 0;
    QObject::connect(&rows, &QAbstractItemModel::modelReset, &rows, [&] { most = std::max(most, rows.rowCount()); });
    window().show(CleanerModule::trash);
    window().settle();
    EXPECT_LE(most, 1);
    EXPECT_EQ(window().main().model().items()->rowCount(), 10'000);
}

TEST_P(PerformancePagesTest, QuittingAnApplicationAsksFirst) {
    service().onQuit([](const MemoryApp&) { return QuitOutcome::NoResponse; });
    openScanned(CleanerModule::memoryOptimization);
    ASSERT_TRUE(window().click(QStringLiteral("memoryApp.1.quit")));
    ASSERT_TRUE(window().click(QStringLiteral("confirmQuit.cancel")));
    EXPECT_THAT(service().quits(), ::testing::IsEmpty());
    ASSERT_TRUE(window().click(QStringLiteral("memoryApp.1.quit")));
    ASSERT_TRUE(window().click(QStringLiteral("confirmQuit.accept")));
    window().waitFor([this] { return !service().quits().empty(); });
    ASSERT_EQ(service().quits().size(), 1U);
    EXPECT_EQ(service().quits().at(0).name, "Blender");
    waitUntilIdle();
}

/// The rows of a page while a dialog is open over it.
class OpenQuestionTest : public WindowTest {
protected:
    /// The next scan of `module` finds what `change` makes of the sample.
    template <class Change>
    void rescan(CleanerModule module, Change change) {
        service().onScan([change](CleanerModule scanned, const ProgressCallback&, const CancelToken&) {
            ScanSnapshot scan = sample::snapshot(scanned);
            change(scan);
            return scan;
        });
        store().scan(module, false);
        waitUntilIdle();
    }
    void waitUntilGone(const char* button) {
        window().waitFor([this, button] { return !isVisible(button); });
    }
    void offerToEnd(const char* row) {
        service().onQuit([](const MemoryApp&) { return QuitOutcome::CannotAsk; });
        ASSERT_TRUE(window().click(QLatin1String(row)));
        ASSERT_TRUE(window().click(QStringLiteral("confirmQuit.accept")));
    }
};
INSTANTIATE_IN_BOTH_LANGUAGES(OpenQuestionTest);

TEST_P(OpenQuestionTest, IsAboutItsApplicationWhateverRowThatIsInByNow) {
    openScanned(CleanerModule::memoryOptimization);
    ASSERT_TRUE(window().click(QStringLiteral("memoryApp.1.quit")));
    rescan(CleanerModule::memoryOptimization, [](ScanSnapshot& scan) { std::ranges::reverse(scan.memoryApps); });
    ASSERT_NE(store().memoryApps().at(1).name, "Blender");
    ASSERT_TRUE(window().click(QStringLiteral("confirmQuit.accept")));
    window().waitFor([this] { return !service().quits().empty(); });
    EXPECT_EQ(service().quits().at(0).name, "Blender");
    waitUntilIdle();
}

TEST_P(OpenQuestionTest, GoesAwayWithItsApplicationAndSaysSo) {
    openScanned(CleanerModule::memoryOptimization);
    ASSERT_TRUE(window().click(QStringLiteral("memoryApp.1.quit")));
    rescan(CleanerModule::memoryOptimization,
           [](ScanSnapshot& scan) { scan.memoryApps.erase(scan.memoryApps.begin() + 1); });
    waitUntilGone("confirmQuit.accept");
    EXPECT_EQ(text("statusMessage"), tr("%@ 已不在列表中。", std::string("Blender")));
    EXPECT_THAT(service().quits(), ::testing::IsEmpty());
}

TEST_P(OpenQuestionTest, GoesAwayWhenItsApplicationWasStartedAnew) {
    openScanned(CleanerModule::memoryOptimization);
    ASSERT_TRUE(window().click(QStringLiteral("memoryApp.1.quit")));
    rescan(CleanerModule::memoryOptimization, [](ScanSnapshot& scan) { scan.memoryApps.at(1).starts = {4711}; });
    waitUntilGone("confirmQuit.accept");
    EXPECT_THAT(service().quits(), ::testing::IsEmpty());
}

TEST_P(OpenQuestionTest, IsAboutItsLoginItemWhateverRowThatIsInByNow) {
    openScanned(CleanerModule::performance);
    ASSERT_TRUE(window().click(QStringLiteral("startup.1.action")));
    rescan(CleanerModule::performance, [](ScanSnapshot& scan) { std::ranges::reverse(scan.startupItems); });
    ASSERT_NE(store().startupItems().at(1).name, "KeePassXC");
    ASSERT_TRUE(window().click(QStringLiteral("confirmStartup.accept")));
    waitUntilIdle();
    ASSERT_EQ(service().disables().size(), 1U);
    EXPECT_EQ(service().disables().at(0).name, "KeePassXC");
}

TEST_P(OpenQuestionTest, GoesAwayWithItsLoginItemAndSaysSo) {
    openScanned(CleanerModule::performance);
    ASSERT_TRUE(window().click(QStringLiteral("startup.1.action")));
    rescan(CleanerModule::performance,
           [](ScanSnapshot& scan) { scan.startupItems.erase(scan.startupItems.begin() + 1); });
    waitUntilGone("confirmStartup.accept");
    EXPECT_EQ(text("statusMessage"), tr("%@ 已不在列表中。", std::string("KeePassXC")));
    EXPECT_THAT(service().disables(), ::testing::IsEmpty());
}

TEST_P(OpenQuestionTest, ComesASecondTimeWhenAnApplicationCanOnlyBeEnded) {
    openScanned(CleanerModule::memoryOptimization);
    offerToEnd("memoryApp.1.quit");
    window().waitFor([this] { return isVisible("confirmEnd.accept"); });
    EXPECT_EQ(text("confirmEnd.message"), tr("%@ 只能被结束，未保存的内容会丢失。", std::string("Blender")));
    EXPECT_EQ(text("confirmEnd.accept"), tr("结束"));
    EXPECT_THAT(service().ends(), ::testing::IsEmpty());
    ASSERT_TRUE(window().click(QStringLiteral("confirmEnd.accept")));
    window().waitFor([this] { return !service().ends().empty(); });
    EXPECT_EQ(service().ends().at(0).name, "Blender");
    waitUntilIdle();
}

TEST_P(OpenQuestionTest, TakesNothingWhenItIsCancelledTheSecondTime) {
    openScanned(CleanerModule::memoryOptimization);
    offerToEnd("memoryApp.1.quit");
    window().waitFor([this] { return isVisible("confirmEnd.cancel"); });
    ASSERT_TRUE(window().click(QStringLiteral("confirmEnd.cancel")));
    waitUntilGone("confirmEnd.cancel");
    waitUntilIdle();
    EXPECT_THAT(service().ends(), ::testing::IsEmpty());
}

TEST_P(OpenQuestionTest, WaitsWhileTheUserLooksAtAnother) {
    auto gate = std::make_shared<Gate>();
    service().onQuit([gate](const MemoryApp&) {
        gate->pass();
        return QuitOutcome::CannotAsk;
    });
    openScanned(CleanerModule::memoryOptimization);
    ASSERT_TRUE(window().click(QStringLiteral("memoryApp.1.quit")));
    ASSERT_TRUE(window().click(QStringLiteral("confirmQuit.accept")));
    gate->awaitVisitor();
    ASSERT_TRUE(window().click(QStringLiteral("memoryApp.0.quit")));
    bool isOffered = false;
    QObject::connect(&store(), &CleanerStore::endOffered, [&] { isOffered = true; });
    gate->open();
    window().waitFor([&] { return isOffered; });
    window().settle();
    EXPECT_TRUE(isVisible("confirmQuit.accept"));
    EXPECT_FALSE(isVisible("confirmEnd.accept"));
    ASSERT_TRUE(window().click(QStringLiteral("confirmQuit.cancel")));
    window().waitFor([this] { return isVisible("confirmEnd.accept"); });
    EXPECT_EQ(text("confirmEnd.message"), tr("%@ 只能被结束，未保存的内容会丢失。", std::string("Blender")));
}

TEST_P(PerformancePagesTest, TheMemoryBarShowsProgramsCachesAndWhatIsFree) {
    service().onScan([](CleanerModule module, const ProgressCallback&, const CancelToken&) {
        ScanSnapshot scan = sample::snapshot(module);
        scan.memorySnapshot = {.totalBytes = 16'000'000'000, .freeBytes = 12'000'000'000, .unusedBytes = 4'000'000'000};
        return scan;
    });
    openScanned(CleanerModule::memoryOptimization);
    const double programs = window().item(QStringLiteral("memoryPart.orange"))->width();
    EXPECT_NEAR(window().item(QStringLiteral("memoryPart.mint"))->width(), 2 * programs, 1);
    EXPECT_NEAR(window().item(QStringLiteral("memoryPart.gray"))->width(), programs, 1);
    EXPECT_TRUE(isVisible("cachesNote"));
}

TEST_P(PerformancePagesTest, WithoutAFigureOfTheCachesTheMemoryBarHasTwoParts) {
    service().onScan([](CleanerModule module, const ProgressCallback&, const CancelToken&) {
        ScanSnapshot scan = sample::snapshot(module);
        scan.memorySnapshot = {.totalBytes = 16'000'000'000, .freeBytes = 4'000'000'000, .unusedBytes = 4'000'000'000};
        return scan;
    });
    openScanned(CleanerModule::memoryOptimization);
    EXPECT_EQ(window().main().model().memoryParts()->rowCount(), 2);
    EXPECT_FALSE(isVisible("cachesNote"));
}

TEST_P(PerformancePagesTest, TheSystemMonitorCanBeOpenedFromARow) {
    openScanned(CleanerModule::memoryOptimization);
    ASSERT_TRUE(window().click(QStringLiteral("memoryApp.0.monitor")));
    EXPECT_THAT(desktop().asked, ::testing::ElementsAre("monitor"));
}

} // namespace
} // namespace vellmoor
