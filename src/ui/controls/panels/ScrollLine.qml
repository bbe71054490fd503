import QtQuick
import QtQuick.Templates as T
import Vellmoor.Theme

// A thin bar that shows while there is more than fits; a quiet one only while something moves or points at it.
T.ScrollBar {
    id: root

    property bool quiet: false

    // The list itself is what a screen reader moves in.
    Accessible.ignored: true
    implicitHeight: 8
    implicitWidth: 8
    minimumSize: 0.08
    padding: 2
    visible: size < 1

    contentItem: Rectangle {
        color: Colors.vmText
        implicitHeight: 4
        implicitWidth: 4
        opacity: root.pressed ? 0.4 : (root.hovered ? 0.3 : (root.quiet && !root.active ? 0 : 0.16))
        radius: 2

        Behavior on opacity  {
            NumberAnimation {
                duration: Motion.quick
            }
        }
    }
}
