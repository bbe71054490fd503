import QtQuick
import Vellmoor.Controls
import Vellmoor.Theme

// The surface of a row: light glass that answers the pointer. A right click asks for the row's menu.
Rectangle {
    id: root

    // What the row says in full, when its place is too narrow for it.
    property string help
    readonly property alias hovered: hover.hovered

    signal tapped
    signal menuAsked

    Accessible.focusable: true
    Accessible.onPressAction: tapped()
    border.color: Colors.vmLine
    border.width: 1
    color: hover.hovered ? Colors.rowHover : Colors.row
    focus: true
    radius: Metrics.rowRadius

    Behavior on color  {
        ColorAnimation {
            duration: Motion.quick
        }
    }

    HelpTip {
        shown: hover.hovered
        text: root.help
    }

    HoverHandler {
        id: hover
    }

    TapHandler {
        onTapped: root.tapped()
    }

    TapHandler {
        acceptedButtons: Qt.RightButton

        onTapped: root.menuAsked()
    }

    FocusRing {
        anchors.margins: 0 // a list cuts what is outside it
        shown: root.activeFocus
    }
}
