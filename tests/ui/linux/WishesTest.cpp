// What the desktop's menu and the command line ask of the window, over scripted results.
#include "start/Wishes.h"

#include "WindowFixture.h"

namespace vellmoor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr Wish emptyTrash{.module = {}, .deed = Wish::Deed::offerEmptyTrash};
constexpr Wish smartScan{.module = {}, .deed = Wish::Deed::scan};
constexpr Wish showPrivacy{.module = CleanerModule::privacy, .deed = Wish::Deed::none};

class WishesTest : public WindowTest {
protected:
    void openWith(const Wish& wish) {
        wishes_.grant(wish);
        open();
        wishes_.ready(store(), window().main().model());
        settle();
    }
    void grant(const Wish& wish) {
        wishes_.grant(wish);
        settle();
    }
    /// Until nothing runs and every queued step was taken.
    void settle() {
        for (int step = 0; step < 3; ++step) {
            window().settle();
            waitUntilIdle();
        }
    }
    Wishes wishes_;
};
INSTANTIATE_IN_BOTH_LANGUAGES(WishesTest);

TEST_P(WishesTest, AWishBeforeTheViewsIsGrantedWithThem) {
    openWith(showPrivacy);
    EXPECT_EQ(store().activeModule(), CleanerModule::privacy);
    EXPECT_THAT(service().scans(), IsEmpty());
}

TEST_P(WishesTest, AScanOfNothingNamedIsASmartScan) {
    openWith(showPrivacy);
    grant(smartScan);
    EXPECT_THAT(service().scans(), ElementsAre(CleanerModule::smartScan));
}

TEST_P(WishesTest, EmptyingTheTrashLooksIntoItAndOpensTheQuestion) {
    openWith(emptyTrash);
    EXPECT_THAT(service().scans(), ElementsAre(CleanerModule::trash));
    ASSERT_TRUE(window().click(QStringLiteral("details.clean"))) << "every path is shown first";
    EXPECT_TRUE(isVisible("confirm.accept"));
    EXPECT_THAT(service().cleans(), IsEmpty()) << "only the answer cleans";
    ASSERT_TRUE(window().click(QStringLiteral("confirm.cancel")));
    EXPECT_THAT(service().cleans(), IsEmpty());
}

TEST_P(WishesTest, AnEmptyTrashIsNoQuestion) {
    service().onScan([](CleanerModule, const ProgressCallback&, const CancelToken&) { return ScanSnapshot(); });
    openWith(emptyTrash);
    EXPECT_EQ(store().activeModule(), CleanerModule::trash);
    EXPECT_FALSE(isVisible("confirm.accept"));
}

TEST_P(WishesTest, NothingChangesUnderAnOpenQuestion) {
    openWith(emptyTrash);
    ASSERT_TRUE(window().click(QStringLiteral("details.clean")));
    ASSERT_TRUE(isVisible("confirm.accept"));
    grant(showPrivacy);
    grant(smartScan);
    EXPECT_EQ(store().activeModule(), CleanerModule::trash);
    EXPECT_THAT(service().scans(), ElementsAre(CleanerModule::trash));
    ASSERT_TRUE(window().click(QStringLiteral("confirm.cancel")));
    ASSERT_TRUE(window().click(QStringLiteral("details.done")));
    grant(showPrivacy);
    EXPECT_EQ(store().activeModule(), CleanerModule::privacy);
}

TEST_P(WishesTest, WhoeverLeavesThePageOrStopsTheScanIsNotAsked) {
    auto gate = std::make_shared<Gate>();
    open();
    wishes_.ready(store(), window().main().model());
    service().onScan([gate](CleanerModule module, const ProgressCallback&, const CancelToken&) {
        gate->pass();
        return sample::snapshot(module);
    });
    wishes_.grant(emptyTrash);
    ASSERT_TRUE(window().waitFor([this] { return store().isScanning(); }));
    store().cancelScan();
    gate->open();
    settle();
    EXPECT_FALSE(isVisible("confirm.accept"));
}

} // namespace
} // namespace vellmoor
