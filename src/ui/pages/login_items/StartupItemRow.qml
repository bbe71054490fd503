// qmllint disable unqualified
import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Lists
import Vellmoor.Models
import Vellmoor.Theme

// One item that starts at login. Its button asks for the confirmation.
RowFrame {
    id: root

    required property StartupListModel rows
    required property int index
    required property string name
    required property string location
    required property bool startsEnabled
    required property string kind
    required property string icon
    // A change of this row is running.
    required property bool isWorking
    property bool locked: false
    readonly property string status: startsEnabled ? L.tr("已启用") : L.tr("已禁用")
    readonly property bool canChange: !isWorking && !locked

    signal changeAsked
    signal revealAsked

    Accessible.description: location
    Accessible.name: name + " " + status + " " + kind
    Accessible.role: Accessible.ListItem
    help: heading.truncated || place.truncated ? name + "\n" + location : ""
    implicitHeight: Math.max(60, line.implicitHeight + 12)
    objectName: "startup." + index

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
        anchors.leftMargin: 12
        anchors.rightMargin: 10
        spacing: 10

        SymbolTile {
            icon: root.icon
            symbol: "power"
            tint: root.startsEnabled ? Colors.green : Colors.gray
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
                id: place

                Layout.fillWidth: true
                elide: Text.ElideMiddle
                text: root.location
            }

            RowLayout {
                spacing: 6

                Badge {
                    objectName: root.objectName + ".status"
                    text: root.status
                    tint: root.startsEnabled ? Colors.green : Colors.gray
                }

                Badge {
                    text: root.kind
                    tint: Colors.orange
                }
            }
        }

        SoftIconButton {
            Accessible.name: help + " " + root.name
            flat: true
            focusPolicy: Qt.ClickFocus
            help: L.tr("在 Finder 中显示")
            ink: Colors.vmSecondaryText
            objectName: root.objectName + ".reveal"
            size: Metrics.rowButton
            symbol: "magnifyingglass"

            onClicked: root.revealAsked()
        }

        SecondaryButton {
            Accessible.name: text + " " + root.name
            compact: true
            enabled: root.canChange
            focusPolicy: Qt.ClickFocus
            objectName: root.objectName + ".action"
            symbol: root.startsEnabled ? "pause.circle" : "play.circle"
            text: root.startsEnabled ? L.tr("禁用") : L.tr("恢复")

            onClicked: {
                root.takeKeyboard();
                root.changeAsked();
            }
        }
    }
}
