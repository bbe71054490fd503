#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace vellmoor {

/// What the system asks of the program. Called on the main thread.
struct ShellHandlers {
    std::function<void()> showMainWindow;
    /// By the status menu, the Dock, or a log-out.
    std::function<void()> quit;
    /// An action of the Edit menu ("copy:"); whether the window did it. What it leaves goes to AppKit's own fields.
    std::function<bool(std::string_view action)> edit;
};

/// The program's place in macOS: the status item with its menu, the menu bar, the Dock icon, what a log-out asks.
/// Main thread only.
class Shell {
public:
    Shell() = default;
    Shell(const Shell&) = delete;
    Shell& operator=(const Shell&) = delete;
    virtual ~Shell() = default;

    /// Installs all of it, as soon as the application has finished launching. Once.
    virtual void install(ShellHandlers handlers) = 0;
    /// Gives the program its Dock icon and menu bar, shows it if it was hidden, and makes it the active one.
    virtual void activate() = 0;
    /// Brings the window of a native view to the front, out of the Dock if it was minimised.
    virtual void bringToFront(std::uintptr_t view) = 0;
    /// Tells the system whether something goes on that the user waits for: then it slows nothing down and does not
    /// fall asleep by itself.
    virtual void setBusy(bool isBusy) = 0;
    /// Tells the user, who looks elsewhere, that something is over. A click on it asks for the main window. Nothing
    /// outside a bundle, and where the user wants no notes.
    virtual void showNote(const std::string& title, const std::string& text) = 0;
    /// Shows a message and waits until it is dismissed.
    virtual void alert(const std::string& title, const std::string& text) = 0;
};

/// The order of an edit action: the window first, which knows its text fields; what it does not take goes to whatever
/// AppKit finds, such as a field of the system's own panels.
void performEdit(std::string_view action, const std::function<bool(std::string_view)>& window,
                 const std::function<void()>& responders);

} // namespace vellmoor
