import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// One place and whether it may be read.
RowLayout {
    id: root

    required property string title
    required property string subtitle
    required property string symbol
    required property bool granted
    required property string recommendation

    Accessible.description: granted ? subtitle : recommendation
    Accessible.name: title + " " + (granted ? L.tr("已授权") : L.tr("未授权"))
    Accessible.role: Accessible.StaticText
    spacing: 10

    SymbolTile {
        Layout.alignment: root.granted ? Qt.AlignVCenter : Qt.AlignTop
        size: Metrics.smallTile
        symbol: root.symbol
        tint: root.granted ? Colors.green : Colors.orange
    }

    ColumnLayout {
        spacing: 1

        BodyText {
            Layout.fillWidth: true
            text: root.title

            HoverHandler {
                id: hover
            }

            HelpTip {
                shown: hover.hovered && root.granted
                text: root.subtitle
            }
        }

        // What is well needs no words; they are in the tip.
        Caption {
            Layout.fillWidth: true
            elide: Text.ElideNone
            text: root.recommendation
            visible: !root.granted
            wrapMode: Text.Wrap
        }
    }

    Symbol {
        color: root.granted ? Colors.green : Colors.orange
        name: root.granted ? "checkmark.circle.fill" : "exclamationmark.triangle.fill"
        size: 15
    }
}
