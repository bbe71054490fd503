// Theme, size of text and language change while a scan runs: everything follows, and the scan's result is whole.
#include "Journey.h"

#include <QQuickWindow>

namespace vellmoor::journey {
namespace {

class LookJourney : public JourneyInEachLanguage {
protected:
    LookJourney() {
        makeFile(".cache/player/b", 200'000);
        makeFile(".local/state/app/session.log", 50'000);
    }
    void scanToItsMiddle() {
        service->holdAt(0.5);
        click(QStringLiteral("scanButton"));
        waitFor("the middle of the scan", [&] { return service->isHeld() && store->scanProgress() >= 0.5; });
    }
    [[nodiscard]] int ink() const {
        return find(QStringLiteral("moduleTitle"))->property("color").value<QColor>().lightness();
    }
    [[nodiscard]] double textHeight() const { return find(QStringLiteral("moduleTitle"))->height(); }
};
IN_BOTH_LANGUAGES(LookJourney);

TEST_P(LookJourney, ThemeAndSizeOfTextFollowDuringAScanWhichGoesOn) {
    open();
    scanToItsMiddle();
    const int dark = ink();
    const double small = textHeight();
    desktop.setLook({.dark = true, .reducedMotion = true, .textScale = 1.4});
    settle();
    EXPECT_GT(ink(), dark + 100);
    EXPECT_GT(textHeight(), small * 1.3);
    EXPECT_TRUE(store->isScanning());
    EXPECT_EQ(textOf(QStringLiteral("scanButton")), tr("取消扫描"));
    desktop.setLook({.highContrast = true, .reducedMotion = true, .textScale = 0.8});
    settle();
    EXPECT_EQ(ink(), 0);
    EXPECT_LT(textHeight(), small);
    service->release();
    waitFor("the end of the scan", [&] { return !store->isScanning(); });
    ASSERT_NE(item(L::tr("用户缓存")), nullptr);
    clean();
    EXPECT_TRUE(isTrashed("player"));
}

TEST_P(LookJourney, AllThreeAtOnceLeaveAWindowThatWorks) {
    open();
    scanToItsMiddle();
    desktop.setLook({.dark = true, .reducedMotion = true, .textScale = 1.4});
    click(QStringLiteral("languageSwitch"));
    EXPECT_FALSE(store->isScanning()) << "its texts would be in the old language";
    service->release();
    waitFor("the engine to stop", [&] { return service->ended().size() == 1; });
    click(QStringLiteral("themeSwitch"));
    settle();
    EXPECT_LT(ink(), 100) << "the user's own choice, light, stands above the desktop's";
    scan();
    ASSERT_NE(item(L::tr("用户缓存")), nullptr);
    clean();
    EXPECT_EQ(textOf(QStringLiteral("result.title")), tr("清理完成"));
    EXPECT_TRUE(isTrashed("player"));
}

} // namespace
} // namespace vellmoor::journey
