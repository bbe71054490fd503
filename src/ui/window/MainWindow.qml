import QtQuick
import Vellmoor.Controls
import Vellmoor.Theme

// The window itself: its sizes and its ground. Its views come when they are loaded.
Window {
    color: Colors.groundMiddle
    height: Metrics.windowHeight
    minimumHeight: Metrics.windowHeight
    minimumWidth: Metrics.windowWidth
    title: "Vellmoor"
    width: Metrics.windowWidth

    Ground {
        anchors.fill: parent
        end: Colors.groundEnd
        middle: Colors.groundMiddle
        start: Colors.groundStart
    }
}
