#pragma once

#include "WindowKeeper.h"
#include "desktop/Shell.h"

#include <QObject>
#include <QTimer>

#include <chrono>

namespace vellmoor {

/// The program above the system's shell: which click shows the window, and in what order it ends. What it is given
/// must outlive it.
class MacProgram final : public QObject {
    Q_OBJECT

public:
    /// `patience`: how long the end may wait for what the user has confirmed.
    MacProgram(Shell& shell, WindowKeeper& keeper, std::chrono::milliseconds patience, QObject* parent = nullptr);

    /// Installs the shell and shows the window; false when it cannot be made, which the user has then been told.
    bool start();
    /// Ends the event loop: at once, or as soon as a clean that runs is done; the window goes at once.
    void quit();

protected:
    /// Whoever asks Qt to end the program, such as its own menu, is answered by quit().
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool showWindow();
    void endIfIdle();

    Shell& shell_;
    WindowKeeper& keeper_;
    std::chrono::milliseconds patience_;
    std::chrono::steady_clock::time_point asked_; ///< when quit() was called first
    QTimer look_;
    bool isEnding_ = false;
};

/// How the window is brought to the front on macOS.
Fronting frontingBy(Shell& shell);

} // namespace vellmoor
