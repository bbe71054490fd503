import QtQuick
import QtQuick.Templates as T
import Vellmoor.Controls
import Vellmoor.Theme

// One command of a context menu.
T.MenuItem {
    id: root

    Accessible.name: text
    Accessible.onPressAction: triggered()
    activeFocusOnTab: visible && enabled // a menu's keys pass by what is not
    height: visible ? implicitHeight : 0
    implicitHeight: Metrics.rowButton + 2
    implicitWidth: Metrics.grown(196) - 8

    background: Rectangle {
        color: root.highlighted ? Colors.tile(Colors.cyan) : Colors.clear
        radius: Metrics.smallRadius
    }
    contentItem: BodyText {
        color: root.enabled ? Colors.vmText : Colors.gray
        font.weight: root.font.bold ? Font.DemiBold : Font.Normal
        leftPadding: 10
        rightPadding: 10
        text: root.text
        verticalAlignment: Text.AlignVCenter
    }
}
