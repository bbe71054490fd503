#pragma once

#include <QObject>

#include <string_view>

namespace vellmoor {

/// Passes AppKit's "cut:", "copy:", "paste:" or "selectAll:" on to a view that can do it, such as a text field;
/// false when `focused` cannot, or there is none.
bool editFocused(QObject* focused, std::string_view action);

} // namespace vellmoor
