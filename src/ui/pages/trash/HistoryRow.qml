// qmllint disable unqualified
import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Lists
import Vellmoor.Models
import Vellmoor.Theme

// A clean, one of its items, or a switched login item, with its way back.
RowFrame {
    id: root

    required property WindowModel vm
    required property HistoryModel history
    required property int index
    required property string name
    required property bool isItem
    required property string title
    required property string detail
    required property string size
    required property string condition
    required property string symbol
    required property bool returnable
    required property bool unfinished
    required property bool expandable
    required property bool expanded
    required property bool ticked
    required property bool files

    Accessible.description: detail
    Accessible.name: title + " " + size + " " + condition
    Accessible.role: Accessible.ListItem
    Spoken.expandable: expandable
    Spoken.expanded: expanded
    Spoken.tick: isItem && returnable ? (ticked ? Qt.Checked : Qt.Unchecked) : -1
    border.width: isItem ? 0 : 1
    color: hovered ? Colors.rowHover : isItem ? Colors.clear : Colors.row
    help: heading.truncated || place.truncated ? title + "\n" + detail : ""
    implicitHeight: Math.max(isItem ? 42 : 50, line.implicitHeight + 8)
    objectName: name

    onMenuAsked: below => menu.open(root, below)
    onTapped: isItem ? history.toggle(index) : history.toggleExpanded(index)

    MenuLoader {
        id: menu

        menu: PathMenu {
            files: root.files
            owner: root.name
            paths: root.history
            place: root.index
            title: root.title

            ContextMenuItem {
                enabled: root.vm.scan.ready
                objectName: root.name + ".menu.putBack"
                text: L.tr("放回")
                visible: root.returnable

                onTriggered: root.history.putBack(root.index)
            }

            ContextMenuItem {
                enabled: root.vm.scan.ready
                objectName: root.name + ".menu.finish"
                text: L.tr("完成清理")
                visible: root.unfinished

                onTriggered: root.vm.decision.askFinish(root.history.cleanOf(root.index))
            }
        }
    }

    RowLayout {
        id: line

        anchors.fill: parent
        anchors.leftMargin: root.isItem ? 42 : 10
        anchors.rightMargin: 6
        spacing: 10

        TickBox {
            enabled: root.returnable
            focusPolicy: Qt.ClickFocus
            objectName: root.name + ".toggle"
            size: 18
            text: root.title
            ticked: root.ticked
            visible: root.isItem

            onClicked: root.history.toggle(root.index)
        }

        SymbolTile {
            size: Metrics.smallTile
            symbol: root.symbol
            tint: root.unfinished ? Colors.orange : root.isItem ? Colors.gray : Colors.cyan
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 1

            RowLayout {
                spacing: 6

                BodyText {
                    id: heading

                    Layout.fillWidth: true
                    Layout.maximumWidth: implicitWidth + 1
                    Layout.minimumWidth: 60
                    elide: Text.ElideMiddle
                    font.weight: root.isItem ? Font.Normal : Font.DemiBold
                    text: root.title
                }

                Badge {
                    objectName: root.name + ".condition"
                    text: root.condition
                    tint: root.unfinished ? Colors.orange : root.returnable ? Colors.cyan : Colors.gray
                }
            }

            Caption {
                id: place

                Layout.fillWidth: true
                elide: Text.ElideMiddle
                text: root.isItem ? root.size + " · " + root.detail : root.detail
            }
        }

        SecondaryButton {
            Accessible.name: text + " " + root.title
            compact: true
            enabled: root.vm.scan.ready
            focusPolicy: Qt.ClickFocus
            objectName: root.name + ".finish"
            text: L.tr("完成清理")
            visible: root.unfinished

            onClicked: {
                root.takeKeyboard();
                root.vm.decision.askFinish(root.history.cleanOf(root.index));
            }
        }

        SecondaryButton {
            Accessible.name: text + " " + root.title
            compact: true
            enabled: root.vm.scan.ready
            focusPolicy: Qt.ClickFocus
            objectName: root.name + ".putBack"
            symbol: "arrow.uturn.backward"
            text: L.tr("放回")
            visible: root.returnable

            onClicked: {
                root.takeKeyboard();
                root.history.putBack(root.index);
            }
        }

        SoftIconButton {
            Accessible.ignored: !root.expandable
            Accessible.name: L.tr("预览文件") + " " + root.title
            enabled: root.expandable
            flat: true
            focusPolicy: Qt.ClickFocus
            ink: Colors.vmSecondaryText
            objectName: root.name + ".expand"
            size: Metrics.rowButton
            symbol: root.expanded ? "chevron.up" : "chevron.down"
            opacity: root.expandable ? 1 : 0 // its place stays, so that the buttons stand below each other

            onClicked: root.history.toggleExpanded(root.index)
        }
    }
}
