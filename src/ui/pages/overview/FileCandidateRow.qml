// qmllint disable unqualified
import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Lists
import Vellmoor.Models
import Vellmoor.Theme

// One large file, for reading only; its menu shows where it is.
RowFrame {
    id: root

    required property FileCandidateModel rows
    required property int index
    required property string name
    required property string location
    required property string size
    required property string modified
    required property string symbol

    Accessible.description: location
    Accessible.name: name + " " + size
    Accessible.role: Accessible.ListItem
    border.width: 0
    color: Colors.clear
    help: heading.truncated || place.truncated ? location + "/" + name : ""
    implicitHeight: Math.max(36, line.implicitHeight)
    objectName: "candidate." + index

    onMenuAsked: below => menu.open(root, below)

    MenuLoader {
        id: menu

        menu: PathMenu {
            owner: root.objectName
            paths: root.rows
            place: root.index
            title: root.name
        }
    }

    RowLayout {
        id: line

        anchors.fill: parent
        spacing: 10

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
}
