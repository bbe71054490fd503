import QtQuick
import QtQuick.Templates as T
import Vellmoor.Theme

// A short help text under its parent.
T.ToolTip {
    id: root

    implicitHeight: label.implicitHeight + 12
    implicitWidth: Math.min(label.implicitWidth, Metrics.grown(320)) + 20
    margins: 6
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? parent.height + 6 : 0

    background: Rectangle {
        border.color: Colors.vmLine
        color: Colors.popup
        radius: Metrics.smallRadius
    }
    contentItem: Item {
        Caption {
            id: label

            anchors.centerIn: parent
            color: Colors.vmText
            objectName: "helpBubble"
            text: root.text
            width: Math.min(implicitWidth, Metrics.grown(320))
            wrapMode: Text.Wrap
        }
    }
}
