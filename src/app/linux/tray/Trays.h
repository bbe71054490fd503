#pragma once

namespace vellmoor {

/// Whether the desktop has a tray now: a host of status items on the session bus, or an owner of X11's tray selection.
/// Qt asks only once in a process and keeps the answer; a tray may come later.
bool hasTray();

} // namespace vellmoor
