// qmllint disable unqualified
import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Lists
import Vellmoor.Models
import Vellmoor.Theme

// One running application and the memory it uses.
RowFrame {
    id: root

    required property MemoryAppListModel rows
    required property int index
    required property string name
    required property string processes
    required property string memory
    required property string icon

    signal quitAsked
    signal monitorAsked

    Accessible.description: processes
    Accessible.name: name + " " + memory
    Accessible.role: Accessible.ListItem
    help: heading.truncated ? name : ""
    implicitHeight: Math.max(44, line.implicitHeight + 6)
    objectName: "memoryApp." + index

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
        anchors.leftMargin: 10
        anchors.rightMargin: 8
        spacing: 10

        SymbolTile {
            icon: root.icon
            symbol: "app.dashed"
            tint: Colors.blue
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2

            BodyText {
                id: heading

                Layout.fillWidth: true
                font.weight: Font.DemiBold
                text: root.name
            }

            Caption {
                Layout.fillWidth: true
                text: root.processes
            }
        }

        BodyText {
            Layout.preferredWidth: Metrics.grown(86)
            color: Colors.ink(Colors.orange)
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignRight
            text: root.memory
        }

        SoftIconButton {
            Accessible.name: help + " " + root.name
            flat: true
            help: L.tr("在活动监视器中查看")
            ink: Colors.vmSecondaryText
            objectName: root.objectName + ".monitor"
            size: Metrics.rowButton
            symbol: "chart.line.uptrend.xyaxis"

            onClicked: root.monitorAsked()
        }

        SoftIconButton {
            Accessible.name: help + " " + root.name
            flat: true
            help: L.tr("退出应用")
            ink: Colors.ink(Colors.red)
            objectName: root.objectName + ".quit"
            size: Metrics.rowButton
            symbol: "xmark.circle"

            onClicked: root.quitAsked()
        }
    }
}
