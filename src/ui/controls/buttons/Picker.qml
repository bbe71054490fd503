// qmllint disable unqualified
import QtQuick
import QtQuick.Templates as T
import Vellmoor.Controls
import Vellmoor.Theme

// One choice of several, opened as a list.
T.ComboBox {
    id: root

    Accessible.focusable: enabled
    // What it chooses.
    property string title

    Accessible.name: title + " " + displayText
    Accessible.onPressAction: popup.visible ? popup.close() : popup.open()
    Spoken.expandable: true
    Spoken.expanded: popup.visible
    focusPolicy: enabled ? Qt.StrongFocus : Qt.NoFocus
    implicitHeight: Metrics.rowButton
    implicitWidth: Metrics.grown(116)

    background: Rectangle {
        border.color: Colors.vmLine
        color: root.down ? Colors.softButtonPressed : (root.hovered ? Colors.rowHover : Colors.softButton)
        radius: height / 2

        FocusRing {
            radius: height / 2
            shown: root.visualFocus
        }
    }
    contentItem: BodyText {
        font.pixelSize: Type.body
        leftPadding: root.mirrored ? 26 : 12
        rightPadding: root.mirrored ? 12 : 26
        text: root.displayText
        verticalAlignment: Text.AlignVCenter
    }
    delegate: MenuRow {
        id: choice

        required property string modelData
        required property int index

        checked: index === root.currentIndex
        highlighted: index === root.highlightedIndex
        objectName: root.objectName + "." + index
        text: modelData
        width: root.popup.width - 8
    }
    indicator: Symbol {
        color: Colors.vmSecondaryText
        name: "chevron.down"
        size: 11
        x: root.mirrored ? 11 : root.width - width - 11
        y: (root.height - height) / 2
    }
    popup: T.Popup {
        implicitHeight: list.contentHeight + 8
        padding: 4
        width: Math.max(root.width, Metrics.grown(132))
        y: root.height + 4

        background: GlassPanel {
            color: Colors.popup
            radius: Metrics.rowRadius
            reach: 14
        }
        contentItem: ListView {
            id: list

            Accessible.name: root.title
            Accessible.role: Accessible.List

            clip: true
            currentIndex: root.highlightedIndex
            model: root.delegateModel
        }
    }
}
