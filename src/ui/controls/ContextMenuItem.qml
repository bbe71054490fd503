import QtQuick
import QtQuick.Templates as T
import Vellmoor.Theme

// One command of a context menu.
T.MenuItem {
    id: root

    Accessible.name: text
    Accessible.onPressAction: triggered()
    implicitHeight: 30
    implicitWidth: 188

    background: Rectangle {
        color: root.highlighted ? Colors.faint(Colors.cyan, 0.12) : Colors.clear
        radius: Metrics.smallRadius
    }
    contentItem: BodyText {
        leftPadding: 10
        rightPadding: 10
        text: root.text
        verticalAlignment: Text.AlignVCenter
    }
}
