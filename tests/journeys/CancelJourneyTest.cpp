// A scan that is cancelled half-way leaves nothing behind, and another can start at once.
#include "Journey.h"

namespace vellmoor::journey {
namespace {

class CancelJourney : public JourneyInEachLanguage {
protected:
    CancelJourney() {
        for (int folder = 0; folder < 40; ++folder) {
            for (int number = 0; number < 25; ++number) {
                makeFile(".cache/program-" + std::to_string(folder) + "/" + std::to_string(number), 5'000);
            }
        }
        makeFile(".local/state/app/session.log", 50'000);
        makeText(".local/share/Trash/files/old", "old");
        makeText(".local/share/Trash/info/old.trashinfo", "[Trash Info]\nPath=old\nDeletionDate=2024-01-01T00:00:00\n");
        service->holdAt(0.5);
    }
    /// Starts a scan that stands still in its middle.
    void startHeld() {
        click(QStringLiteral("scanButton"));
        waitFor("the middle of the scan", [&] { return service->isHeld() && store->scanProgress() >= 0.5; });
    }
};
IN_BOTH_LANGUAGES(CancelJourney);

TEST_P(CancelJourney, ACancelledScanLeavesNothingAndTheNextIsComplete) {
    const auto before = tree();
    open();
    startHeld();
    EXPECT_EQ(textOf(QStringLiteral("scanButton")), tr("取消扫描"));
    click(QStringLiteral("scanButton"));
    EXPECT_FALSE(store->isScanning());
    EXPECT_EQ(textOf(QStringLiteral("statusMessage")), tr("扫描已取消。"));
    EXPECT_EQ(store->scanProgress(), 0.0);
    EXPECT_EQ(textOf(QStringLiteral("scanButton")), tr("开始扫描"));
    EXPECT_TRUE(store->cleanupItems().empty());
    EXPECT_FALSE(store->hasResult(CleanerModule::smartScan));
    service->release();
    waitFor("the engine to stop", [&] { return service->ended().size() == 1; });
    EXPECT_TRUE(service->ended().front().wasCancelled);

    scan();
    ASSERT_NE(item(L::tr("用户缓存")), nullptr);
    EXPECT_EQ(item(L::tr("用户缓存"))->targets.size(), 40U);
    EXPECT_EQ(item(L::tr("用户缓存"))->files, 1000);
    EXPECT_NE(item(L::tr("系统日志")), nullptr);
    EXPECT_NE(item(L::tr("用户废纸篓")), nullptr);
    EXPECT_EQ(tree(), before) << "scanning only reads";
}

TEST_P(CancelJourney, AnotherModulesScanRunsWhileTheCancelledOneStillEnds) {
    open();
    startHeld();
    click(QStringLiteral("scanButton"));
    show(CleanerModule::trash);
    scan();
    ASSERT_NE(item(L::tr("用户废纸篓")), nullptr);
    EXPECT_EQ(item(L::tr("用户废纸篓"))->targets.size(), 1U);
    const QString status = textOf(QStringLiteral("statusMessage"));

    service->release();
    waitFor("the first engine call to end", [&] { return service->ended().size() == 2; });
    EXPECT_EQ(service->ended().front().module, CleanerModule::trash);
    EXPECT_TRUE(service->ended().back().wasCancelled);
    QCoreApplication::processEvents();
    EXPECT_EQ(textOf(QStringLiteral("statusMessage")), status) << "what the first one says late is not heard";
    EXPECT_FALSE(store->hasResult(CleanerModule::smartScan));
    EXPECT_EQ(item(L::tr("用户废纸篓"))->targets.size(), 1U);

    clean();
    EXPECT_FALSE(has(".local/share/Trash/files/old"));
    EXPECT_TRUE(has(".cache/program-0/0"));
}

} // namespace
} // namespace vellmoor::journey
