pragma Singleton
import QtQuick
import Vellmoor.Appearance

// The five text sizes; they grow with the desktop's own text size.
QtObject {
    readonly property string family: Appearance.fontFamily
    readonly property int display: Math.round(28 * Appearance.fontScale)
    readonly property int heading: Math.round(20 * Appearance.fontScale)
    readonly property int subheading: Math.round(15 * Appearance.fontScale)
    readonly property int button: Math.round(14 * Appearance.fontScale)
    readonly property int body: Math.round(13 * Appearance.fontScale)
    readonly property int caption: Math.round(11 * Appearance.fontScale)
}
