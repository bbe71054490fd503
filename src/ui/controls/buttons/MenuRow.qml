import QtQuick
import QtQuick.Templates as T
import Vellmoor.Controls
import Vellmoor.Theme

// A row of an opened list.
T.ItemDelegate {
    id: root

    Accessible.name: text
    Accessible.onPressAction: {
        if (root.enabled)
            root.clicked();
    }
    Accessible.selected: checked
    implicitHeight: Metrics.rowButton + 2

    // The list that opened it keeps the keyboard.
    onHighlightedChanged: {
        if (highlighted)
            Spoken.tellFocus();
    }

    background: Rectangle {
        color: root.highlighted || root.hovered ? Colors.tile(Colors.cyan) : Colors.clear
        radius: Metrics.smallRadius
    }
    contentItem: BodyText {
        font.weight: root.checked ? Font.DemiBold : Font.Normal
        leftPadding: 10
        rightPadding: 10
        text: root.text
        verticalAlignment: Text.AlignVCenter
    }
}
