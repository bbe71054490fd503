#include "MacProgram.h"

#include "desktop/EditCommands.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>

#include <cstdio>

namespace vellmoor {

Fronting frontingBy(Shell& shell) {
    return {.activate = [&shell] { shell.activate(); },
            .raise = [&shell](QQuickWindow& window) { shell.bringToFront(window.winId()); }};
}

MacProgram::MacProgram(Shell& shell, WindowKeeper& keeper, std::chrono::milliseconds patience, QObject* parent)
    : QObject(parent),
      shell_(shell),
      keeper_(keeper),
      patience_(patience) {
    constexpr std::chrono::milliseconds interval{100};
    look_.setInterval(interval);
    connect(&look_, &QTimer::timeout, this, &MacProgram::endIfIdle);
    connect(&keeper_, &WindowKeeper::quitAsked, this, &MacProgram::quit);
    connect(&keeper_, &WindowKeeper::busyChanged, this, [this](bool isBusy) { shell_.setBusy(isBusy); });
    QCoreApplication::instance()->installEventFilter(this);
}

bool MacProgram::start() {
    shell_.install({.showMainWindow = [this] { showWindow(); },
                    .quit = [this] { quit(); },
                    .edit =
                        [](std::string_view action) {
                            // Nothing has Qt's focus while a panel of the system's own has the keyboard.
                            return editFocused(QGuiApplication::focusObject(), action);
                        }});
    return showWindow();
}

bool MacProgram::showWindow() {
    if (isEnding_) {
        return false;
    }
    const auto shown = keeper_.show();
    if (!shown) {
        std::fprintf(stderr, "vellmoor: %s\n", shown.error().c_str());
        shell_.alert("Vellmoor", shown.error());
    }
    return shown.has_value();
}

// The main thread stays free while a clean is brought to its end, so that the system sees no program that hangs.
void MacProgram::quit() {
    if (isEnding_) {
        return;
    }
    isEnding_ = true;
    asked_ = std::chrono::steady_clock::now();
    keeper_.hide();
    look_.start();
    endIfIdle();
}

void MacProgram::endIfIdle() {
    if (keeper_.isCleaning() && std::chrono::steady_clock::now() - asked_ < patience_) {
        return;
    }
    look_.stop();
    QCoreApplication::exit(0);
}

bool MacProgram::eventFilter(QObject* watched, QEvent* event) {
    if (watched == QCoreApplication::instance() && event->type() == QEvent::Quit) {
        event->ignore(); // "not now" to AppKit; the loop ends by quit()
        quit();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace vellmoor
