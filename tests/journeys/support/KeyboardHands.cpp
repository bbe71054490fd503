#include "KeyboardHands.h"

#include <QQuickWindow>
#include <QTest>

#include <algorithm>

namespace vellmoor::journey {
namespace {

constexpr int enough = 80;
constexpr int patience = 10'000; // milliseconds

} // namespace

QString KeyboardJourney::focused() const {
    const QQuickItem* item = window->window().activeFocusItem();
    return item == nullptr ? QString() : item->objectName();
}

bool KeyboardJourney::isMarked(const QQuickItem& item) {
    return std::ranges::any_of(item.childItems(), [](const QQuickItem* child) {
        return child->objectName() == QLatin1String("focusRing") && child->isVisible();
    });
}

void KeyboardJourney::tabTo(const QString& name) {
    for (int presses = 0; focused() != name && presses < enough; ++presses) {
        press(Qt::Key_Tab);
    }
    ASSERT_EQ(focused(), name) << "Tab does not get there";
}

void KeyboardJourney::waitForFocus(const QString& name) const {
    waitFor(qPrintable(name + QStringLiteral(" to have the keyboard")), [&] { return focused() == name; });
}

void KeyboardJourney::goTo(CleanerModule module) {
    const auto name = [](CleanerModule which) {
        return QStringLiteral("sidebar.") + text(std::string(rawValue(which)));
    };
    tabTo(name(store->activeModule()));
    for (int presses = 0; focused() != name(module) && presses < 8; ++presses) {
        press(store->activeModule() < module ? Qt::Key_Down : Qt::Key_Up);
    }
    ASSERT_EQ(focused(), name(module));
    ASSERT_EQ(store->activeModule(), module);
}

void KeyboardJourney::waitForScan() {
    waitFor("the end of the scan", [&] { return !store->isScanning() && store->scanProgress() == 1.0; });
    settle();
    waitForKeyboard();
}

void KeyboardJourney::waitForKeyboard() const {
    const auto isSomewhere = [&] {
        const QQuickItem* item = window->window().activeFocusItem();
        return item != nullptr && item != window->window().contentItem() && item->isVisible() && item->isEnabled();
    };
    if (!QTest::qWaitFor(isSomewhere, patience)) {
        QString place;
        for (const QQuickItem* item = window->window().activeFocusItem(); item != nullptr; item = item->parentItem()) {
            place += QLatin1Char(' ') + QLatin1String(item->metaObject()->className()) + QLatin1Char(' ') +
                     item->objectName();
        }
        ADD_FAILURE() << "nothing has the keyboard, but:" << place.toStdString();
    }
}

void KeyboardJourney::scanByKey() {
    press(Qt::Key_R, Qt::ControlModifier);
    waitForScan();
}

void KeyboardJourney::goToRow(const QString& list, int row) {
    const auto isInside = [&] {
        const QQuickItem* view = find(list);
        return view != nullptr && view->isAncestorOf(window->window().activeFocusItem());
    };
    for (int presses = 0; !isInside() && presses < enough; ++presses) {
        press(Qt::Key_Tab);
    }
    ASSERT_TRUE(isInside()) << "Tab does not get there";
    const auto current = [&] { return find(list)->property("currentIndex").toInt(); };
    for (int presses = 0; current() != row && presses < 40; ++presses) {
        press(current() < row ? Qt::Key_Down : Qt::Key_Up);
    }
    ASSERT_EQ(current(), row);
    EXPECT_TRUE(isMarked(*window->window().activeFocusItem())) << "a ring shows the row";
}

void KeyboardJourney::accept(const QString& question) {
    waitForFocus(question + QStringLiteral(".cancel"));
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), question + QStringLiteral(".accept"));
    press(Qt::Key_Return);
}

void KeyboardJourney::askCleanByKeys() {
    tabTo(QStringLiteral("cleanButton"));
    press(Qt::Key_Return);
    if (window->model().offer()->previewsClean()) {
        waitFor("the paths", [&] { return isShown(QStringLiteral("details.clean")); });
        tabTo(QStringLiteral("details.clean"));
        press(Qt::Key_Return);
    }
}

void KeyboardJourney::cleanByKeys() {
    askCleanByKeys();
    accept(QStringLiteral("confirm"));
    waitForReport();
    EXPECT_EQ(store->latestReport()->failedCount, 0);
    waitForFocus(QStringLiteral("result.done"));
    press(Qt::Key_Return);
    waitFor("the sheet to close", [&] { return !store->latestReport(); });
    waitUntilIdle();
}

void KeyboardJourney::chooseFromMenu(const QString& command) {
    press(Qt::Key_Menu);
    waitFor("the menu", [&] { return isShown(command); });
    for (int presses = 0; focused() != command && presses < 10; ++presses) {
        press(Qt::Key_Down);
    }
    ASSERT_EQ(focused(), command);
    press(Qt::Key_Return);
}

void KeyboardJourney::waitUntilIdle() {
    waitFor("the end of it", [&] { return !store->isCleaning() && !store->isScanning(); });
    settle();
    waitForKeyboard();
}

bool KeyboardJourney::isSelected(const std::string& title) const {
    const CleanupItem* found = item(title);
    return found != nullptr && found->isSelected;
}

} // namespace vellmoor::journey
