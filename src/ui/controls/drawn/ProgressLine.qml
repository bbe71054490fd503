import QtQuick
import Vellmoor.Theme

// A thin bar, filled from the left.
Rectangle {
    id: root

    property real value: 0
    property color tint: Colors.cyan

    color: Colors.track
    implicitHeight: 5
    radius: height / 2

    Rectangle {
        color: root.tint
        height: parent.height
        radius: height / 2
        visible: root.value > 0
        width: Math.max(height, parent.width * Math.min(1, root.value))

        Behavior on width  {
            NumberAnimation {
                duration: Motion.calm
                easing.type: Easing.OutCubic
            }
        }
    }
}
