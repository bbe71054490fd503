pragma Singleton
import QtQuick
import Vellmoor.Appearance

// Durations in milliseconds; nothing moves when the desktop asks for less movement.
QtObject {
    readonly property bool reduced: Appearance.reducedMotion
    readonly property int quick: reduced ? 0 : 150
    readonly property int calm: reduced ? 0 : 250
}
