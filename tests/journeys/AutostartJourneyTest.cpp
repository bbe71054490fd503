// A login item is switched off and on again: its file moves between two folders and never changes.
#include "Journey.h"

#include <algorithm>

namespace vellmoor::journey {
namespace {

constexpr auto entry = "[Desktop Entry]\nType=Application\nName=Synchroniser\nExec=/usr/bin/true --hidden\n";
const fs::path enabled = ".config/autostart/org.example.Sync.desktop";
const fs::path disabled = ".config/autostart.disabled/org.example.Sync.desktop";

class AutostartJourney : public JourneyInEachLanguage {
protected:
    AutostartJourney() {
        makeText(enabled, entry);
        makeText(".config/autostart/other.desktop",
                 "[Desktop Entry]\nType=Application\nName=Another\nExec=/usr/bin/true\n");
    }
    [[nodiscard]] int position() const {
        const auto& items = store->startupItems();
        return static_cast<int>(std::ranges::find(items, "Synchroniser", &StartupItem::name) - items.begin());
    }
    [[nodiscard]] QString startup() const { return QStringLiteral("startup.%1").arg(position()); }
    [[nodiscard]] bool isListed(bool isEnabled) const {
        const auto& items = store->startupItems();
        return std::ranges::any_of(
            items, [&](const StartupItem& item) { return item.name == "Synchroniser" && item.isEnabled == isEnabled; });
    }
    /// Presses the item's button, confirms, and waits until the page was read again.
    void change(bool isEnabled) {
        click(startup() + QStringLiteral(".action"));
        click(QStringLiteral("confirmStartup.accept"));
        waitFor("the change", [&] { return !store->isCleaning() && !store->isScanning() && isListed(isEnabled); });
        settle();
    }
};
IN_BOTH_LANGUAGES(AutostartJourney);

TEST_P(AutostartJourney, AnEntryIsDisabledAndRestored) {
    open();
    show(CleanerModule::performance);
    scan();
    ASSERT_TRUE(isListed(true));
    EXPECT_EQ(textOf(startup() + QStringLiteral(".status")), tr("已启用"));
    EXPECT_EQ(textOf(startup() + QStringLiteral(".action")), tr("禁用"));

    change(false);
    EXPECT_FALSE(has(enabled));
    EXPECT_EQ(textOfFile(disabled), entry);
    EXPECT_TRUE(has(".config/autostart/other.desktop"));
    EXPECT_EQ(textOf(startup() + QStringLiteral(".status")), tr("已禁用"));
    EXPECT_EQ(textOf(startup() + QStringLiteral(".action")), tr("恢复"));

    change(true);
    EXPECT_EQ(textOfFile(enabled), entry);
    EXPECT_FALSE(has(disabled));
    EXPECT_EQ(textOf(startup() + QStringLiteral(".status")), tr("已启用"));
}

TEST_P(AutostartJourney, CancellingTheQuestionMovesNothing) {
    const auto before = tree();
    open();
    show(CleanerModule::performance);
    scan();
    click(startup() + QStringLiteral(".action"));
    click(QStringLiteral("confirmStartup.cancel"));
    EXPECT_FALSE(store->isCleaning());
    EXPECT_EQ(tree(), before);
}

TEST_P(AutostartJourney, ANameThatWasTakenMeanwhileIsSaidAndNothingIsReplaced) {
    open();
    show(CleanerModule::performance);
    scan();
    change(false);
    makeText(enabled, "[Desktop Entry]\nType=Application\nName=Newcomer\nExec=/usr/bin/true\n");
    const auto before = tree(".config");
    click(startup() + QStringLiteral(".action"));
    std::vector<std::string> said;
    QObject::connect(store.get(), &CleanerStore::statusMessageChanged, store.get(),
                     [&] { said.push_back(store->statusMessage()); });
    click(QStringLiteral("confirmStartup.accept"));
    waitFor("the rescan", [&] { return !store->isCleaning() && !store->isScanning() && store->scanProgress() == 1.0; });
    EXPECT_NE(std::ranges::find(said, L::tr("启用失败：LaunchAgents 中已存在同名配置。")), said.end());
    EXPECT_EQ(tree(".config"), before);
}

} // namespace
} // namespace vellmoor::journey
