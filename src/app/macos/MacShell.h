#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

namespace vellmoor {

/// What the shell asks of the program. Called on the main thread.
struct ShellHandlers {
    std::function<void()> showMainWindow;
    std::function<void()> quit;
    /// An action of the Edit menu that nothing of AppKit's took.
    std::function<void(std::string_view action)> edit;
};

/// The program's place in macOS: the status item with its menu, the menu bar, and the click on the Dock icon. It
/// needs the application object, and installs itself once that has finished launching. One at a time.
class MacShell {
public:
    explicit MacShell(ShellHandlers handlers);
    /// From here on nothing is handed to the program; the status item goes.
    ~MacShell();
    MacShell(const MacShell&) = delete;
    MacShell& operator=(const MacShell&) = delete;

    /// Gives the program its Dock icon and menu bar, shows it if it was hidden, and makes it the active one.
    static void activate();
    /// Brings the window of a native view to the front, out of the Dock if it was minimised.
    static void bringToFront(std::uintptr_t view);
    static void terminate();
};

} // namespace vellmoor
