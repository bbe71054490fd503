#pragma once

#include "Journey.h"

#include <QQuickItem>

#include <string>

namespace vellmoor::journey {

/// Every module without a mouse: Tab, the arrows, Space, Return and Escape are all that these hands use.
class KeyboardJourney : public JourneyInEachLanguage {
protected:
    [[nodiscard]] QString focused() const;
    static bool isMarked(const QQuickItem& item);
    void tabTo(const QString& name);
    void waitForFocus(const QString& name) const;
    /// Through the sidebar, from the module that is shown.
    void goTo(CleanerModule module);
    /// What goes or rests must not take the keyboard with it: something that is shown and works has it.
    void waitForKeyboard() const;
    void waitForScan();
    void scanByKey();
    /// Moves to that row of a list and sees that it is marked.
    void goToRow(const QString& list, int row);
    /// From the opened question: the answer that changes nothing has the focus, one Tab further is the other one.
    void accept(const QString& question);
    void askCleanByKeys();
    void cleanByKeys();
    /// Takes that command from the menu of the row that has the keyboard.
    void chooseFromMenu(const QString& command);
    void waitUntilIdle();
    [[nodiscard]] bool isSelected(const std::string& title) const;
};

} // namespace vellmoor::journey
