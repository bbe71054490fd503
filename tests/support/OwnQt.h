// What a desktop may have set for Qt, replaced by the tests' own.
#pragma once

#include <QByteArray>

namespace vellmoor::test {

/// To be called before there is an application: neither a display nor a graphics processor, and nobody's scale or
/// style.
inline void useOwnQt() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    for (const char* variable : {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "QT_FONT_DPI", "QT_STYLE_OVERRIDE",
                                 "QT_QUICK_CONTROLS_STYLE"}) {
        qunsetenv(variable);
    }
}

} // namespace vellmoor::test
