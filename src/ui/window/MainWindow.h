#pragma once

#include "AccessibleTypes.h"
#include "Appearance.h"
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
#include <optional>
#include <string>

namespace vellmoor {

/// What the window needs to know for its first frame.
struct WindowStart {
    DesktopLook look;
    ThemeChoice theme = ThemeChoice::system;
    std::optional<QSize> size; ///< that it had last
    std::optional<QPoint> place;
};

/// As the desktop and its memory have it.
WindowStart windowStart(const DesktopLook& look, const std::optional<std::string>& theme,
                        const std::optional<std::string>& size, const std::optional<std::string>& place = {});

/// The names under which the desktop remembers them.
inline constexpr std::string_view themeSetting = "vmTheme";
inline constexpr std::string_view sizeSetting = "vmWindowSize";
inline constexpr std::string_view placeSetting = "vmWindowPlace";
inline constexpr std::string_view moduleSetting = "vmModule";

/// The smallest window for a screen whose free area is `available`: all of the usual one where that fits.
QSize smallestWindow(QSize available);

/// The main window and what stands behind it. The engine, store, language manager and desktop must outlive it.
/// It comes in two steps, so that it can be on the screen while its views are still being loaded: at first it has
/// nothing but its ground; `fill` loads the views.
class MainWindow {
public:
    using Outcome = std::expected<void, std::string>;

    /// Hidden, with its ground.
    explicit MainWindow(const WindowStart& start = {});
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;
    ~MainWindow();

    /// Begins to load the views in the background, before there is anything that they could show. fill() goes on with
    /// it.
    void loadAhead(QQmlEngine& engine);
    /// Loads the views, in the background for `Asynchronous`; calls `done` once, with the reason when they cannot be
    /// loaded. Once per window and per engine.
    void fill(QQmlEngine& engine, CleanerStore& store, LanguageManager& languages, Desktop& desktop,
              QQmlComponent::CompilationMode mode, std::function<void(const Outcome&)> done);

    [[nodiscard]] QQuickWindow& window() { return *window_; }
    /// Only after `fill`.
    [[nodiscard]] WindowModel& model() { return *model_; }

private:
    /// Asks the user before the window closes over a running clean.
    class Closing : public QObject {
    public:
        explicit Closing(MainWindow& main) : main_(main) {}
        bool eventFilter(QObject* watched, QEvent* event) override;

    private:
        MainWindow& main_;
    };

    void load(QQmlEngine& engine, QQmlComponent::CompilationMode mode);
    [[nodiscard]] Outcome createViews();
    void bringToFront();
    void layGround();
    void followDesktop(Desktop& desktop);
    void rememberIn(Desktop& desktop);
    void rememberWindow(Desktop& desktop);
    void rememberLists(Desktop& desktop);
    [[nodiscard]] bool isMaximised() const;

    Appearance appearance_;
    Desktop* desktop_ = nullptr; ///< that is listened to
    Closing closing_{*this};
    std::unique_ptr<WindowModel> model_; ///< outlives the views that read it
    std::unique_ptr<QQuickWindow> window_;
    std::optional<AccessibleTypes> types_;
    std::unique_ptr<QQmlComponent> views_;
};

/// Both steps at once, with what the desktop remembers; the window is hidden. The reason when its views cannot be
/// loaded.
std::expected<std::unique_ptr<MainWindow>, std::string> loadMainWindow(QQmlEngine& engine, CleanerStore& store,
                                                                       LanguageManager& languages, Desktop& desktop);

} // namespace vellmoor
