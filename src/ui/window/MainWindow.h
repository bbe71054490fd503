#pragma once

#include "CleanerStore.h"
#include "Desktop.h"
#include "LanguageManager.h"
#include "WindowModel.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

#include <expected>
#include <functional>
#include <memory>
#include <string>

namespace vellmoor {

/// The main window and what stands behind it. The engine, store, language manager and desktop must outlive it.
/// It comes in two steps, so that it can be on the screen while its views are still being loaded: at first it has
/// nothing but its ground; `fill` loads the views.
class MainWindow {
public:
    using Outcome = std::expected<void, std::string>;

    /// Hidden, with its ground.
    MainWindow();
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;
    ~MainWindow();

    /// Loads the views, in the background for `Asynchronous`; calls `done` once, with the reason when they cannot be
    /// loaded. Once per window and per engine.
    void fill(QQmlEngine& engine, CleanerStore& store, LanguageManager& languages, Desktop& desktop,
              QQmlComponent::CompilationMode mode, std::function<void(const Outcome&)> done);

    [[nodiscard]] QQuickWindow& window() { return *window_; }
    /// Only after `fill`.
    [[nodiscard]] WindowModel& model() { return *model_; }

private:
    [[nodiscard]] Outcome createViews();

    std::unique_ptr<WindowModel> model_; ///< outlives the views that read it
    std::unique_ptr<QQuickWindow> window_;
    std::unique_ptr<QQmlComponent> views_;
};

/// Both steps at once; the window is hidden. The reason when its views cannot be loaded.
std::expected<std::unique_ptr<MainWindow>, std::string> loadMainWindow(QQmlEngine& engine, CleanerStore& store,
                                                                       LanguageManager& languages, Desktop& desktop);

} // namespace vellmoor
