// Ending an application: asked as its own menu would ask it, or ended when there is no way to ask.
#pragma once

#include "Platform.h"
#include "ProcessLine.h"

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor::quit {

/// Platform::requestQuit: by the application's own "quit" action on the session bus, else by closing its X windows.
/// When one of the two was delivered it waits up to `patience` for the application's end, and sends nothing more: a
/// window that asks about unsaved content is the user's. This process, process 1, what is not the user's, and numbers
/// that were used again are never counted or touched.
QuitOutcome request(const MemoryApp& app, std::chrono::milliseconds patience = std::chrono::seconds(10));

/// Platform::endApplication: SIGTERM to its main processes, then it waits up to `patience` for the end of all.
QuitOutcome end(const MemoryApp& app, std::chrono::milliseconds patience = std::chrono::seconds(10));

/// Those without one of the others above them. The wrappers of a sandbox are none, and are seen through: the first
/// process below them is the application's.
std::vector<ProcessLine> mainProcesses(const std::vector<ProcessLine>& all);

/// "org.gnome.Text-Editor" as "/org/gnome/Text_Editor".
std::string objectPath(std::string_view busName);

} // namespace vellmoor::quit
