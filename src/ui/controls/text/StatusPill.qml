import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Theme

// A capsule: the symbol and the value in their colour, the title beside them.
Rectangle {
    id: root

    required property string title
    required property string value
    required property color tint
    required property string symbol
    property bool compact: false
    property string help
    // Not a figure yet.
    property bool muted: false

    Accessible.name: title + " " + value
    Accessible.role: Accessible.StaticText
    border.color: Colors.vmLine
    color: Colors.softButton
    implicitHeight: compact ? Metrics.rowButton : Metrics.grown(40)
    implicitWidth: row.implicitWidth + 24
    radius: height / 2

    HoverHandler {
        id: hover
    }

    HelpTip {
        shown: hover.hovered
        text: root.help
    }

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.leftMargin: root.compact ? 10 : 14
        anchors.rightMargin: root.compact ? 10 : 14
        spacing: Metrics.gap

        Symbol {
            color: root.tint
            name: root.symbol
            size: 15
        }

        Caption {
            Layout.fillWidth: true
            text: root.title
        }

        BodyText {
            Layout.maximumWidth: root.width * 0.6
            color: root.muted ? Colors.vmSecondaryText : Colors.ink(root.tint)
            font.weight: root.muted ? Font.Normal : Font.DemiBold
            text: root.value
        }
    }
}
