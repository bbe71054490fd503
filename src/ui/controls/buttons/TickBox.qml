import QtQuick
import QtQuick.Templates as T
import Vellmoor.Controls
import Vellmoor.Theme

// A tick that follows its model: a click asks, the model answers.
T.CheckBox {
    id: root

    property bool ticked: false
    property bool partial: false
    property int size: Metrics.tickBox

    Accessible.focusable: enabled
    Accessible.name: text
    Accessible.onPressAction: {
        if (root.enabled)
            root.clicked();
    }
    Accessible.onToggleAction: {
        if (root.enabled)
            root.clicked();
    }
    Spoken.tick: checkState
    checkState: !ticked ? Qt.Unchecked : partial ? Qt.PartiallyChecked : Qt.Checked
    focusPolicy: enabled ? Qt.StrongFocus : Qt.NoFocus
    implicitHeight: Metrics.grown(size)
    implicitWidth: implicitHeight
    nextCheckState: () => checkState
    opacity: enabled ? 1 : 0.4
    tristate: true

    background: Rectangle {
        border.color: root.hovered ? Colors.focus : Colors.edge
        border.width: root.ticked && !Colors.dark ? 0 : 1
        color: root.ticked ? Colors.primary : Colors.softButton
        radius: 6

        Behavior on color  {
            ColorAnimation {
                duration: Motion.quick
            }
        }

        FocusRing {
            radius: 9
            shown: root.visualFocus
        }
    }
    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            color: Colors.onAccent
            name: root.partial ? "minus" : "checkmark"
            size: root.size - 6
            visible: root.ticked
        }
    }
    Keys.onEnterPressed: root.clicked()
    Keys.onReturnPressed: root.clicked()
}
