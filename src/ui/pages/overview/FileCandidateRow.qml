import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Theme

// One large file, for reading only.
RowLayout {
    id: root

    required property int index
    required property string name
    required property string location
    required property string size
    required property string modified
    required property string symbol

    Accessible.description: location
    Accessible.name: name + " " + size
    Accessible.role: Accessible.ListItem
    spacing: 10

    HoverHandler {
        id: hover
    }

    SymbolTile {
        size: 30
        symbol: root.symbol
        tint: Colors.indigo
    }

    ColumnLayout {
        Layout.fillWidth: true
        spacing: 1

        BodyText {
            id: heading

            Layout.fillWidth: true
            elide: Text.ElideMiddle
            text: root.name

            HelpTip {
                shown: hover.hovered && (heading.truncated || place.truncated)
                text: root.location + "/" + root.name
            }
        }

        Caption {
            id: place

            Layout.fillWidth: true
            elide: Text.ElideMiddle
            text: root.modified === "" ? root.location : root.location + " · " + root.modified
        }
    }

    BodyText {
        font.pixelSize: Type.body
        font.weight: Font.Medium
        text: root.size
    }
}
