// The modal surfaces: details, confirmations, results.
#include "WindowFixture.h"

namespace vellmoor {
namespace {

using SheetsTest = WindowTest;
INSTANTIATE_IN_BOTH_LANGUAGES(SheetsTest);

TEST_P(SheetsTest, CancellingTheConfirmationCleansNothing) {
    openScanned(CleanerModule::systemJunk);
    askClean();
    ASSERT_TRUE(window().click(QStringLiteral("confirm.cancel")));
    EXPECT_FALSE(isVisible("confirm.accept"));
    EXPECT_THAT(service().cleans(), ::testing::IsEmpty());
}

TEST_P(SheetsTest, EscapeCancelsTheConfirmation) {
    openScanned(CleanerModule::systemJunk);
    askClean();
    window().press(Qt::Key_Escape);
    EXPECT_FALSE(isVisible("confirm.accept"));
    EXPECT_THAT(service().cleans(), ::testing::IsEmpty());
}

TEST_P(SheetsTest, ReturnInTheConfirmationCancelsUnlessTheUserMovedToTheAction) {
    openScanned(CleanerModule::systemJunk);
    askClean();
    window().press(Qt::Key_Return);
    EXPECT_THAT(service().cleans(), ::testing::IsEmpty());
    askClean();
    window().press(Qt::Key_Tab);
    window().press(Qt::Key_Return);
    waitUntilIdle();
    EXPECT_EQ(service().cleans().size(), 1U);
}

TEST_P(SheetsTest, TheConfirmationNamesTheSelectionAndItsRisks) {
    openScanned(CleanerModule::systemJunk);
    window().click(QStringLiteral("item.2.toggle"));
    askClean();
    const std::string risks = L::tr("风险级别：%@。", L::tr("%@ %d 项", L::tr("安全"), 2) + L::tr("，") +
                                                          L::tr("%@ %d 项", L::tr("谨慎"), 1));
    EXPECT_EQ(text("confirm.message").toStdString(),
              L::tr("普通项目会移到废纸篓；废纸篓中的项目会被永久删除。当前选择 %@。%@", "4.3 GB", risks));
    EXPECT_EQ(text("confirm.accept"), tr("清理"));
}

TEST_P(SheetsTest, TheMemoryConfirmationNamesTheReclaimableMemory) {
    openScanned(CleanerModule::memoryOptimization);
    askClean();
    EXPECT_EQ(text("confirm.message"),
              tr("将请求 macOS 释放预计可释放的文件缓存并整理内存压力；系统可能会要求管理员授权。当前预计可释放 %@。",
                 std::string("2.74 GB")));
    EXPECT_EQ(text("confirm.accept"), tr("优化"));
}

TEST_P(SheetsTest, AConfirmedCleanTakesWhatIsSelected) {
    service().onClean([](const std::vector<CleanupItem>&) { return sample::cleanReport(); });
    openScanned(CleanerModule::systemJunk);
    window().click(QStringLiteral("item.1.toggle"));
    cleanConfirmed();
    ASSERT_EQ(service().cleans().size(), 1U);
    ASSERT_EQ(service().cleans().at(0).size(), 1U);
    EXPECT_EQ(service().cleans().at(0).at(0).targets.size(), 3U);
    EXPECT_EQ(text("result.title"), tr("清理完成"));
    EXPECT_EQ(text("result.noFailures"), tr("没有失败项目"));
    EXPECT_EQ(service().scans().size(), 2U);
}

TEST_P(SheetsTest, WhileACleanRunsNeitherScanNorCleanCanStart) {
    auto gate = std::make_shared<Gate>();
    service().onClean([gate](const std::vector<CleanupItem>&) {
        gate->pass();
        return sample::cleanReport();
    });
    openScanned(CleanerModule::systemJunk);
    askClean();
    ASSERT_TRUE(window().click(QStringLiteral("confirm.accept")));
    EXPECT_EQ(text("cleanButton"), tr("清理中..."));
    EXPECT_FALSE(isEnabled("cleanButton"));
    EXPECT_FALSE(isEnabled("scanButton"));
    EXPECT_EQ(QString::fromStdString(store().statusMessage()), tr("正在清理选中项目..."));
    gate->open();
    waitUntilIdle();
}

TEST_P(SheetsTest, AReportWithoutFailuresHasTheLowSheet) {
    service().onClean([](const std::vector<CleanupItem>&) { return sample::cleanReport(); });
    openScanned(CleanerModule::systemJunk);
    cleanConfirmed();
    const QObject* sheet = window().main().window().findChild<QObject*>(QStringLiteral("result"));
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->property("height").toInt(), 480);
    EXPECT_EQ(sheet->property("width").toInt(), 720);
}

TEST_P(SheetsTest, AReportWithFailuresNamesThemInTheHighSheet) {
    service().onClean([](const std::vector<CleanupItem>&) { return sample::partlyFailedReport(); });
    openScanned(CleanerModule::systemJunk);
    cleanConfirmed();
    const QObject* sheet = window().main().window().findChild<QObject*>(QStringLiteral("result"));
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->property("height").toInt(), 540);
    EXPECT_EQ(text("result.title"), tr("清理已完成，部分项目失败"));
    EXPECT_EQ(text("result.subtitle"), tr("部分路径未能处理，可查看失败原因后重试。"));
    const QQuickItem* lines = window().item(QStringLiteral("result.failures"));
    ASSERT_NE(lines, nullptr);
    EXPECT_EQ(lines->property("count").toInt(), 2);
    EXPECT_FALSE(isVisible("result.noFailures"));
}

TEST_P(SheetsTest, WhatWasKeptIsShownWithItsReasonAndIsNoFailure) {
    CleanupReport report = sample::cleanReport();
    report.keptCount = 1;
    report.notes = {"report.odt: " + L::tr("自扫描后已更改，已保留")};
    service().onClean([&report](const std::vector<CleanupItem>&) { return report; });
    openScanned(CleanerModule::systemJunk);
    cleanConfirmed();
    EXPECT_EQ(text("result.title"), tr("清理完成"));
    const QQuickItem* lines = window().item(QStringLiteral("result.notes"));
    ASSERT_NE(lines, nullptr);
    EXPECT_EQ(lines->property("count").toInt(), 1);
    EXPECT_TRUE(isVisible("result.notes"));
    EXPECT_FALSE(isVisible("result.failures"));
    EXPECT_FALSE(isVisible("result.noFailures"));
}

TEST_P(SheetsTest, AMemoryRunThatFailedWhollyOrInPartIsTitledSo) {
    CleanupReport report;
    report.attemptedCount = 1;
    report.failedCount = 1;
    report.failures = {"no"};
    service().onClean([&report](const std::vector<CleanupItem>&) { return report; });
    openScanned(CleanerModule::memoryOptimization);
    cleanConfirmed();
    EXPECT_EQ(text("result.title"), tr("内存优化失败"));
    EXPECT_EQ(window().item(QStringLiteral("result.share"))->property("value").toString(), "--");
    window().click(QStringLiteral("result.done"));
    report.removedCount = 1;
    cleanConfirmed();
    EXPECT_EQ(text("result.title"), tr("内存优化已完成，部分失败"));
}

TEST_P(SheetsTest, AMemoryRunShowsTheChangeOfUse) {
    service().onClean([](const std::vector<CleanupItem>&) { return sample::memoryReport(); });
    openScanned(CleanerModule::memoryOptimization);
    cleanConfirmed();
    EXPECT_EQ(text("result.title"), tr("内存优化完成"));
    EXPECT_EQ(text("result.subtitle"), tr("已请求 macOS 释放预计可释放的文件缓存。"));
    EXPECT_EQ(window().item(QStringLiteral("result.share"))->property("value").toString(), "78% → 62%");
}

TEST_P(SheetsTest, DoneForgetsTheReport) {
    service().onClean([](const std::vector<CleanupItem>&) { return sample::cleanReport(); });
    openScanned(CleanerModule::systemJunk);
    cleanConfirmed();
    ASSERT_TRUE(window().click(QStringLiteral("result.done")));
    EXPECT_FALSE(store().latestReport().has_value());
    EXPECT_FALSE(isVisible("result.title"));
}

TEST_P(SheetsTest, TheReportStaysWhenTheWindowBecomesActiveAgain) {
    service().onClean([](const std::vector<CleanupItem>&) { return sample::cleanReport(); });
    openScanned(CleanerModule::systemJunk);
    cleanConfirmed();
    ASSERT_TRUE(window().click(QStringLiteral("result.openTrash")));
    EXPECT_THAT(desktop().asked, ::testing::ElementsAre("trash"));
    window().main().model().activated();
    EXPECT_TRUE(isVisible("result.title"));
}

TEST_P(SheetsTest, RescanScansTheCleanedModuleAndForgetsTheReport) {
    service().onClean([](const std::vector<CleanupItem>&) { return sample::cleanReport(); });
    openScanned(CleanerModule::trash);
    cleanConfirmed();
    ASSERT_TRUE(window().click(QStringLiteral("result.rescan")));
    waitUntilIdle();
    EXPECT_FALSE(store().latestReport().has_value());
    EXPECT_THAT(service().scans(), ::testing::Each(CleanerModule::trash));
    EXPECT_EQ(service().scans().size(), 3U);
}

TEST_P(SheetsTest, TheDetailsEditTheLiveSelection) {
    openScanned(CleanerModule::systemJunk);
    ASSERT_TRUE(window().click(QStringLiteral("previewButton")));
    ASSERT_TRUE(
        window().click(QStringLiteral("item.0.target.0.toggle"), Qt::LeftButton, QStringLiteral("detailsList")));
    EXPECT_FALSE(store().cleanupItems().at(0).targets.at(0).isSelected);
    EXPECT_EQ(text("details.summary").toStdString(), L::tr("已选择 %d 个路径，预计释放 %@", 4, "984 MB"));
    ASSERT_TRUE(window().click(QStringLiteral("details.done")));
    EXPECT_FALSE(isVisible("details.summary"));
    EXPECT_EQ(text("selectedText"), tr("当前选择 %@", std::string("984 MB")));
}

TEST_P(SheetsTest, TheLastUntickedPathUnticksItsCategory) {
    openScanned(CleanerModule::systemJunk);
    ASSERT_TRUE(window().click(QStringLiteral("previewButton")));
    const QString list = QStringLiteral("detailsList");
    ASSERT_TRUE(window().click(QStringLiteral("item.1.target.0.toggle"), Qt::LeftButton, list));
    EXPECT_TRUE(store().cleanupItems().at(1).isSelected);
    ASSERT_TRUE(window().click(QStringLiteral("item.1.target.1.toggle"), Qt::LeftButton, list));
    EXPECT_FALSE(store().cleanupItems().at(1).isSelected);
}

TEST_P(SheetsTest, SelectAllAndDeselectAllReachEveryCleanableRowOfTheModule) {
    openScanned(CleanerModule::privacy);
    ASSERT_TRUE(window().click(QStringLiteral("previewButton")));
    ASSERT_TRUE(window().click(QStringLiteral("details.selectAll")));
    EXPECT_EQ(store().selectedItems(CleanerModule::privacy).size(), 2U);
    ASSERT_TRUE(window().click(QStringLiteral("details.deselectAll")));
    EXPECT_THAT(store().selectedItems(CleanerModule::privacy), ::testing::IsEmpty());
}

TEST_P(SheetsTest, ASheetHoldsBackClicksOnThePage) {
    openScanned(CleanerModule::systemJunk);
    ASSERT_TRUE(window().click(QStringLiteral("previewButton")));
    window().click(QStringLiteral("sidebar.trash"));
    EXPECT_EQ(store().activeModule(), CleanerModule::systemJunk);
    EXPECT_TRUE(isVisible("details.done"));
}

} // namespace
} // namespace vellmoor
