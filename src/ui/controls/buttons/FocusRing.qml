import QtQuick
import Vellmoor.Theme

// Where the keyboard is; drawn around its parent.
Rectangle {
    property bool shown: false

    anchors.fill: parent
    anchors.margins: -3
    border.color: Colors.focus
    border.width: Metrics.focusWidth
    color: Colors.clear
    objectName: "focusRing"
    radius: Metrics.rowRadius
    visible: shown
    z: 1
}
