#pragma once

#include "CleanerStore.h"
#include "Desktop.h"
#include "LanguageManager.h"
#include "WindowModel.h"

#include <QQmlEngine>
#include <QQuickWindow>

#include <expected>
#include <memory>

namespace vellmoor {

/// The main window and what stands behind it. The engine, store, language manager and desktop must outlive it.
class MainWindow {
public:
    MainWindow(std::unique_ptr<WindowModel> model, std::unique_ptr<QQuickWindow> window);

    [[nodiscard]] QQuickWindow& window() { return *window_; }
    [[nodiscard]] WindowModel& model() { return *model_; }

private:
    std::unique_ptr<WindowModel> model_; ///< outlives the views that read it
    std::unique_ptr<QQuickWindow> window_;
};

/// Builds the window, hidden; the reason when its views cannot be loaded. One window per engine.
std::expected<std::unique_ptr<MainWindow>, std::string> loadMainWindow(QQmlEngine& engine, CleanerStore& store,
                                                                       LanguageManager& languages, Desktop& desktop);

} // namespace vellmoor
