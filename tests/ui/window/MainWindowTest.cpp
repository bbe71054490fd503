// The window's frame: sidebar, top bar, header, disk bar, bottom bar.
#include "WindowFixture.h"

#include <QTest>

namespace vellmoor {
namespace {

using MainWindowTest = WindowTest;
INSTANTIATE_IN_BOTH_LANGUAGES(MainWindowTest);

TEST_P(MainWindowTest, BeforeAnyScanTheRingWaits) {
    open();
    EXPECT_EQ(text("ringUnit"), tr("等待扫描"));
    EXPECT_EQ(text("headerTitle"), tr("准备好后开始扫描你的 Mac"));
}

TEST_P(MainWindowTest, BeforeAnyScanTheDiskBarShowsThreePlaceholders) {
    open();
    const QQuickItem* used = window().item(QStringLiteral("segment.cyan"));
    const QQuickItem* cleanable = window().item(QStringLiteral("segment.green"));
    const QQuickItem* available = window().item(QStringLiteral("segment.gray"));
    ASSERT_TRUE(used && cleanable && available);
    EXPECT_NEAR(used->width() / cleanable->width(), 0.72 / 0.06, 0.01);
    EXPECT_NEAR(available->width() / cleanable->width(), 0.22 / 0.06, 0.01);
    EXPECT_EQ(text("diskSummary"), tr("点击扫描读取磁盘容量"));
}

TEST_P(MainWindowTest, EachModuleHasARowThatShowsItsPage) {
    open();
    for (const CleanerModule module : allCleanerModules) {
        const std::string row = "sidebar." + std::string(rawValue(module));
        ASSERT_TRUE(window().click(QString::fromStdString(row)));
        EXPECT_EQ(text("moduleTitle"), QString::fromStdString(title(module)));
        EXPECT_EQ(store().activeModule(), module);
    }
    EXPECT_THAT(service().scans(), ::testing::IsEmpty());
}

// The list of large files once still held positions in the Smart Scan's longer array.
TEST_P(MainWindowTest, FromASmartScanOneClickLeadsToTheLargeFilesItFound) {
    openScanned(CleanerModule::smartScan);
    ASSERT_TRUE(window().click(QStringLiteral("sidebar.largeFiles")));
    EXPECT_TRUE(isVisible("item.0"));
    EXPECT_TRUE(isVisible("selectFiltered"));
}

TEST_P(MainWindowTest, AButtonSaysUnderThePointerWhatItDoes) {
    open();
    window().settle();
    const QQuickItem* button = window().item(QStringLiteral("homeButton"));
    ASSERT_NE(button, nullptr);
    const QPointF centre = button->mapToScene(QPointF(button->width() / 2, button->height() / 2));
    QTest::mouseMove(&window().main().window(), QPoint(4, 4));
    QTest::mouseMove(&window().main().window(), centre.toPoint());
    EXPECT_TRUE(window().waitFor([&] { return isVisible("helpBubble"); }, 10));
    EXPECT_EQ(text("helpBubble"), tr("打开用户目录"));
    QTest::mouseMove(&window().main().window(), QPoint(4, 4));
    EXPECT_TRUE(window().waitFor([&] { return !isVisible("helpBubble"); }, 10));
}

TEST_P(MainWindowTest, AModuleThatWasNotScannedSaysSo) {
    open();
    window().click(QStringLiteral("sidebar.privacy"));
    EXPECT_EQ(text("headerTitle"), tr("尚未扫描此模块"));
    EXPECT_EQ(text("scanButton"), tr("扫描此模块"));
    EXPECT_EQ(text("emptyState"), tr("暂无结果"));
    EXPECT_FALSE(isEnabled("cleanButton"));
}

TEST_P(MainWindowTest, TheScanButtonScansTheShownModule) {
    open();
    window().click(QStringLiteral("sidebar.systemJunk"));
    ASSERT_TRUE(window().click(QStringLiteral("scanButton")));
    waitUntilIdle();
    EXPECT_THAT(service().scans(), ::testing::ElementsAre(CleanerModule::systemJunk));
    EXPECT_TRUE(isVisible("item.3"));
}

TEST_P(MainWindowTest, TheScanButtonCancelsARunningScanAndStartsNone) {
    auto gate = std::make_shared<Gate>();
    service().onScan([gate](CleanerModule module, const ProgressCallback& progress, const CancelToken&) {
        progress({L::tr("正在查找大文件..."), 0.42});
        gate->pass();
        return sample::snapshot(module);
    });
    open();
    ASSERT_TRUE(window().click(QStringLiteral("scanButton")));
    window().waitFor([this] { return store().scanProgress() > 0.4; });
    EXPECT_EQ(text("scanButton"), tr("取消扫描"));
    EXPECT_EQ(text("ringUnit"), tr("扫描中"));
    EXPECT_EQ(text("headerTitle"), tr("正在扫描 %@", title(CleanerModule::smartScan)));
    EXPECT_EQ(text("statusMessage"), tr("正在查找大文件..."));
    EXPECT_EQ(text("emptyState"), tr("正在读取文件系统..."));
    ASSERT_TRUE(window().click(QStringLiteral("scanButton")));
    gate->open();
    EXPECT_FALSE(store().isScanning());
    EXPECT_EQ(text("statusMessage"), tr("扫描已取消。"));
    EXPECT_EQ(service().scans().size(), 1U);
}

TEST_P(MainWindowTest, NeitherScanNorCleanStartsWhileAScanRuns) {
    auto gate = std::make_shared<Gate>();
    openScanned(CleanerModule::systemJunk);
    service().onScan([gate](CleanerModule module, const ProgressCallback&, const CancelToken&) {
        gate->pass();
        return sample::snapshot(module);
    });
    ASSERT_TRUE(window().click(QStringLiteral("refreshButton")));
    EXPECT_FALSE(isEnabled("refreshButton"));
    EXPECT_FALSE(isEnabled("bottomRefresh"));
    EXPECT_FALSE(isEnabled("cleanButton"));
    window().press(Qt::Key_R, Qt::ControlModifier);
    gate->open();
    waitUntilIdle();
    EXPECT_EQ(service().scans().size(), 2U);
}

TEST_P(MainWindowTest, AfterAScanTheHeaderTellsWhatWasFound) {
    openScanned(CleanerModule::trash);
    EXPECT_EQ(text("headerTitle"), tr("发现 %@ 可安全处理项目", std::string("2.06 GB")));
    EXPECT_EQ(text("selectedText"), tr("当前选择 %@", std::string("2.06 GB")));
}

TEST_P(MainWindowTest, TheTopBarOpensTheHomeFolder) {
    open();
    ASSERT_TRUE(window().click(QStringLiteral("homeButton")));
    EXPECT_THAT(desktop().asked, ::testing::ElementsAre("home"));
}

TEST_P(MainWindowTest, TheLanguageSwitchRebuildsEveryText) {
    open();
    window().click(QStringLiteral("sidebar.trash"));
    ASSERT_TRUE(window().click(QStringLiteral("languageSwitch")));
    EXPECT_NE(L::language(), GetParam());
    EXPECT_EQ(text("moduleTitle"), tr("废纸篓"));
    EXPECT_EQ(text("headerTitle"), tr("尚未扫描此模块"));
    EXPECT_EQ(text("statusMessage"), tr("尚未扫描，点击扫描此模块。"));
    EXPECT_EQ(text("selectedText"), tr("当前选择 %@", std::string("0 KB")));
    EXPECT_EQ(text("languageSwitch"), L::language() == AppLanguage::english ? "中文" : "English");
}

TEST_P(MainWindowTest, ControlRScansTheShownModule) {
    open();
    window().press(Qt::Key_R, Qt::ControlModifier);
    waitUntilIdle();
    EXPECT_THAT(service().scans(), ::testing::ElementsAre(CleanerModule::smartScan));
}

TEST_P(MainWindowTest, TheSidebarWorksWithTheKeyboard) {
    open();
    window().item(QStringLiteral("sidebar.smartScan"))->forceActiveFocus(Qt::TabFocusReason);
    window().press(Qt::Key_Tab);
    window().press(Qt::Key_Return);
    EXPECT_EQ(store().activeModule(), CleanerModule::systemJunk);
    window().press(Qt::Key_Tab);
    window().press(Qt::Key_Space);
    EXPECT_EQ(store().activeModule(), CleanerModule::largeFiles);
}

TEST_P(MainWindowTest, APermissionThatIsMissingShowsTheBannerOnTheModulesItAffects) {
    service().setHints(sample::limitedHints());
    open();
    const QString areas = tr("浏览器数据") + tr("、") + tr("邮件数据");
    EXPECT_EQ(text("limitation"), tr("开启完全磁盘访问后，可扫描 %@。", areas.toStdString()));
    ASSERT_TRUE(window().click(QStringLiteral("openSettings")));
    EXPECT_THAT(desktop().asked, ::testing::ElementsAre("permissions"));
    window().click(QStringLiteral("sidebar.trash"));
    EXPECT_FALSE(isVisible("limitation"));
}

TEST_P(MainWindowTest, BecomingActiveReadsThePermissionsAgain) {
    open();
    EXPECT_FALSE(isVisible("limitation"));
    service().setHints(sample::limitedHints());
    window().main().model().activated();
    EXPECT_TRUE(isVisible("limitation"));
}

TEST_P(MainWindowTest, AnOrdinaryUserSeesNoNoticeOfRoot) {
    open();
    EXPECT_FALSE(isVisible("rootNotice"));
}

TEST_P(MainWindowTest, StartedAsRootEveryPageSaysSoUntilTheNoticeIsClosed) {
    desktop().asRoot = true;
    open();
    for (const CleanerModule module : allCleanerModules) {
        window().show(module);
        EXPECT_EQ(text("rootNotice"), tr("Vellmoor 正以 root 身份运行"));
        EXPECT_EQ(text("rootNotice.text"), tr("它只会扫描和清理 root 自己的用户目录。请退出后用你自己的账户启动。"));
    }
    ASSERT_TRUE(window().click(QStringLiteral("rootNotice.close")));
    EXPECT_FALSE(isVisible("rootNotice"));
    window().click(QStringLiteral("sidebar.smartScan"));
    EXPECT_FALSE(isVisible("rootNotice"));
}

TEST_P(MainWindowTest, TheNoticeOfRootFollowsTheLanguage) {
    desktop().asRoot = true;
    open();
    const QString before = text("rootNotice");
    ASSERT_TRUE(window().click(QStringLiteral("languageSwitch")));
    EXPECT_NE(text("rootNotice"), before);
    EXPECT_EQ(text("rootNotice"), tr("Vellmoor 正以 root 身份运行"));
}

TEST_P(MainWindowTest, EveryPageIsDrawnWithoutAWarning) {
    service().setHints(sample::limitedHints());
    openScanned(CleanerModule::smartScan);
    for (const CleanerModule module : allCleanerModules) {
        window().show(module);
        EXPECT_FALSE(window().main().window().grabWindow().isNull());
    }
}

} // namespace
} // namespace vellmoor
