pragma Singleton
import QtQuick
import Vellmoor.Appearance

// The text sizes; they grow and shrink with the desktop's own text size, also while the program runs.
QtObject {
    readonly property string family: Appearance.fontFamily
    readonly property real scale: Appearance.fontScale
    readonly property int display: Math.round(28 * scale)
    readonly property int heading: Math.round(20 * scale)
    readonly property int subheading: Math.round(15 * scale)
    readonly property int button: Math.round(14 * scale)
    readonly property int body: Math.round(13 * scale)
    readonly property int caption: Math.round(11 * scale)
}
