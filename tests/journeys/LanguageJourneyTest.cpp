// The language is switched while a scan runs. Its texts would be in the old language, so the scan ends there.
#include "Journey.h"

namespace vellmoor::journey {
namespace {

class LanguageJourney : public JourneyInEachLanguage {
protected:
    LanguageJourney() {
        makeFile(".cache/player/b", 200'000);
        makeFile(".local/state/app/session.log", 50'000);
        makeFile("Documents/letter.txt", 5'000);
    }
    [[nodiscard]] static AppLanguage other() {
        return GetParam() == AppLanguage::english ? AppLanguage::chinese : AppLanguage::english;
    }
};
IN_BOTH_LANGUAGES(LanguageJourney);

TEST_P(LanguageJourney, TheTextsFollowDuringAScanAndTheNextResultIsWholeAndInTheNewLanguage) {
    open();
    service->holdAt(0.5);
    click(QStringLiteral("scanButton"));
    waitFor("the middle of the scan", [&] { return service->isHeld() && store->scanProgress() >= 0.5; });
    const std::string oldCaches = L::tr("用户缓存");

    click(QStringLiteral("languageSwitch"));
    ASSERT_EQ(L::language(), other());
    EXPECT_EQ(textOf(QStringLiteral("moduleTitle")), tr("智能扫描"));
    EXPECT_EQ(textOf(QStringLiteral("scanButton")), tr("开始扫描"));
    EXPECT_EQ(textOf(QStringLiteral("headerTitle")), tr("准备好后开始扫描你的 Mac"));
    EXPECT_EQ(textOf(QStringLiteral("ringUnit")), tr("等待扫描"));
    EXPECT_FALSE(store->isScanning());
    service->release();
    waitFor("the engine to stop", [&] { return service->ended().size() == 1; });
    QCoreApplication::processEvents();
    EXPECT_TRUE(service->ended().front().wasCancelled);
    EXPECT_TRUE(store->cleanupItems().empty()) << "nothing in the old language arrives late";

    scan();
    EXPECT_EQ(item(oldCaches), nullptr);
    ASSERT_NE(item(L::tr("用户缓存")), nullptr);
    EXPECT_NE(item(L::tr("系统日志")), nullptr);
    clean();
    EXPECT_EQ(textOf(QStringLiteral("result.title")), tr("清理完成"));
    EXPECT_TRUE(isTrashed("player"));
    EXPECT_TRUE(isTrashed("session.log"));
    EXPECT_TRUE(has("Documents/letter.txt"));
}

TEST_P(LanguageJourney, TicksOfTheOldLanguageCleanNothing) {
    open();
    scan();
    ASSERT_TRUE(find(QStringLiteral("cleanButton"))->isEnabled());
    const auto before = tree();
    click(QStringLiteral("languageSwitch"));
    waitFor("the button to rest", [&] { return !find(QStringLiteral("cleanButton"))->isEnabled(); });
    EXPECT_TRUE(store->cleanupItems().empty());
    EXPECT_EQ(tree(), before);
}

} // namespace
} // namespace vellmoor::journey
