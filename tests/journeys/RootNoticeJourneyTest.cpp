// Started as root, the window says whose home it looks at; the rest goes on as ever.
#include "Journey.h"

namespace vellmoor::journey {
namespace {

class RootNoticeJourney : public JourneyInEachLanguage {};
IN_BOTH_LANGUAGES(RootNoticeJourney);

TEST_P(RootNoticeJourney, TheNoticeStandsUntilItIsClosedAndHindersNothing) {
    makeFile(".cache/player/b", 200'000);
    desktop.asRoot = true;
    open();
    EXPECT_EQ(textOf(QStringLiteral("rootNotice")), tr("Vellmoor 正以 root 身份运行"));
    show(CleanerModule::systemJunk);
    scan();
    EXPECT_TRUE(isShown(QStringLiteral("rootNotice")));
    clean();
    EXPECT_TRUE(isTrashed("player"));
    click(QStringLiteral("result.done"));
    EXPECT_TRUE(isShown(QStringLiteral("rootNotice")));
    click(QStringLiteral("rootNotice.close"));
    EXPECT_FALSE(isShown(QStringLiteral("rootNotice")));
}

} // namespace
} // namespace vellmoor::journey
