#pragma once

#include "CleanerStore.h"
#include "Desktop.h"
#include "LanguageManager.h"
#include "service/CleanerService.h"

#include <QObject>
#include <QQuickWindow>

#include <chrono>
#include <expected>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vellmoor {

/// How the system brings this program and a window of it to the front.
struct Fronting {
    std::function<void()> activate;
    std::function<void(QQuickWindow&)> raise;
};

/// The one main window. It is made, with a store of its own, when it is to be shown, and both go when it is closed;
/// the program lives on. Everything it is given must outlive it; `service` also outlives calls still under way.
class WindowKeeper final : public QObject {
    Q_OBJECT

public:
    WindowKeeper(std::shared_ptr<CleanerService> service, LanguageManager& languages, Desktop& desktop,
                 Fronting fronting, QObject* parent = nullptr);
    ~WindowKeeper() override;

    /// Shows the window, made anew if it must be, and brings it to the front; the reason when it cannot be made.
    std::expected<void, std::string> show();
    /// The open window; null when there is none.
    [[nodiscard]] QQuickWindow* window() const;
    /// Its store; null when there is none.
    [[nodiscard]] CleanerStore* store() const;
    /// Takes the window from the screen; it stays as it is.
    void hide();
    /// Whether what the user confirmed still runs, in this window or an earlier one.
    [[nodiscard]] bool isCleaning() const;
    struct Patience {
        std::chrono::milliseconds scan;   ///< a cancelled scan ends at once
        std::chrono::milliseconds action; ///< what the user confirmed is brought to its end
    };
    /// Hides the window, closes its store and waits for calls into the engine, also those of earlier windows. False
    /// when one still runs after that: then what it uses must stay until the process ends.
    bool shutDown(Patience patience);

Q_SIGNALS:
    /// The window asks for the program's end.
    void quitAsked();
    /// A scan or a clean of the window has begun, or the last of them ended.
    void busyChanged(bool isBusy);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private Q_SLOTS:
    void frontAgain();
    void discard();

private:
    struct View;

    std::expected<void, std::string> make();
    void tellBusy();

    std::shared_ptr<CleanerService> service_;
    LanguageManager& languages_;
    Desktop& desktop_;
    Fronting fronting_;
    std::unique_ptr<View> view_;
    bool wasBusy_ = false;
    std::vector<std::unique_ptr<CleanerStore>> leaving_; ///< of closed windows whose calls into the engine still ran
};

} // namespace vellmoor
