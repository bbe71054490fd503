import QtQuick
import Vellmoor.Controls
import Vellmoor.Theme

// The surface of a row: light glass that answers the pointer. A right click asks for the row's menu, and so do the menu
// key and Shift and F10.
Rectangle {
    id: root

    // What the row says in full, when its place is too narrow for it.
    property string help
    readonly property alias hovered: hover.hovered
    // Gone from its list, and only fading.
    property bool leaving: false

    signal tapped
    // Where the pointer is, or below the row.
    signal menuAsked(bool below)

    // Before what one of its buttons does: a button may rest or go by it, and the keyboard would leave the row.
    function takeKeyboard(): void {
        forceActiveFocus(Qt.MouseFocusReason);
    }

    Accessible.focusable: true
    Accessible.ignored: leaving
    Accessible.onPressAction: tapped()
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Menu || event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier) {
            menuAsked(true);
            event.accepted = true;
        }
    }
    // Kept by its list for later use it is no row: it takes neither the keyboard nor a screen reader.
    ListView.onPooled: visible = false
    ListView.onRemove: leaving = true
    ListView.onReused: {
        leaving = false;
        visible = true;
        opacity = 1;
    }
    border.color: Colors.vmLine
    border.width: 1
    color: hover.hovered ? Colors.rowHover : Colors.row
    enabled: !leaving
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

        onTapped: root.menuAsked(false)
    }

    FocusRing {
        anchors.margins: 0 // a list cuts what is outside it
        shown: root.activeFocus
    }
}
