#pragma once

#include "CleanerStore.h"
#include "Desktop.h"
#include "LanguageManager.h"
#include "MainWindow.h"
#include "SourceViews.h"

#include <QQmlEngine>
#include <QQuickItem>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace vellmoor {

/// The main window on a store, driven by object names; takes pictures of it.
class WindowDriver {
public:
    WindowDriver(std::shared_ptr<CleanerService> service, Desktop& desktop, AppLanguage language);

    [[nodiscard]] bool isReady() const { return window_ != nullptr; }
    [[nodiscard]] CleanerStore& store() { return store_; }
    [[nodiscard]] LanguageManager& languages() { return languages_; }
    [[nodiscard]] MainWindow& main() { return *window_; }
    /// Runs the event loop until `done`, at most `seconds`; whether it came to be.
    bool waitFor(const std::function<bool()>& done, int seconds = 120);
    /// Whatever the screen has room for.
    void resize(QSize size);
    void show(CleanerModule module);
    /// Scans the shown module to its end.
    void scan();
    /// The visible item of that object name, below the visible item called `within` when that is given.
    [[nodiscard]] QQuickItem* item(const QString& objectName, const QString& within = {});
    /// Its text; "<nothing>" when no such item is visible.
    [[nodiscard]] QString text(const QString& objectName);
    /// A click on that item, scrolled into view first; false when there is none.
    bool click(const QString& objectName, Qt::MouseButton button = Qt::LeftButton, const QString& within = {});
    /// Keys for the window, as from the keyboard.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Lets queued changes, layouts and bindings happen.
    void settle();
    /// Writes the window as it looks after everything has settled.
    bool take(const std::filesystem::path& file);

private:
    LanguageManager languages_;
    CleanerStore store_;
    SourceViews sources_; ///< with VELLMOOR_QML_SOURCES=src/ui, for looking at changed views
    QQmlEngine engine_;
    std::unique_ptr<MainWindow> window_;
};

/// The visible item of that object name below `root`, popups included; null when there is none.
QQuickItem* findItem(QQuickItem* root, const QString& objectName);

} // namespace vellmoor
