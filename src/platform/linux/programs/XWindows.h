#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace vellmoor::xwindows {

/// Asks the window manager to close every window of these processes (_NET_CLOSE_WINDOW of the Extended Window
/// Manager Hints), as its own close button would. Whether there was such a window; false without an X server.
bool requestClose(const std::vector<std::int32_t>& pids);
/// The same for every window of that class (WM_CLASS, in any case): the processes of a sandbox call themselves by
/// numbers of their own.
bool requestClose(std::string_view windowClass);

} // namespace vellmoor::xwindows
