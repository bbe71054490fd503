// qmllint disable unqualified
import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Lists
import Vellmoor.Models
import Vellmoor.Theme

// What is never offered again, and how it is: Return shows one, Space offers it again.
Sheet {
    id: root

    required property WindowModel vm
    readonly property KeptListModel kept: vm.kept

    objectName: "kept"
    title: L.tr("保留的项目")
    wantedHeight: Math.min(Metrics.grown(480), Metrics.grown(210) + Math.max(list.contentHeight, Metrics.grown(110)))
    wantedWidth: Metrics.grown(640)

    onAboutToShow: kept.load()
    onOpened: done.forceActiveFocus(Qt.TabFocusReason)

    contentItem: ColumnLayout {
        spacing: Metrics.wideGap

        Heading {
            Layout.fillWidth: true
            text: root.title
        }

        BodyText {
            Layout.fillWidth: true
            color: Colors.vmSecondaryText
            elide: Text.ElideNone
            spoken: true
            text: L.tr("这些路径及其中的一切不会列出、统计或清理。")
            wrapMode: Text.Wrap
        }

        Item {
            Layout.fillHeight: true
            Layout.fillWidth: true

            RowList {
                id: list

                anchors.fill: parent
                anchors.rightMargin: -10
                objectName: "keptList"
                rows: root.kept
                title: root.title

                onSwitched: row => root.kept.offerAgain(row)

                delegate: RowFrame {
                    id: line

                    required property int index
                    required property string name
                    required property string location
                    required property string symbol
                    required property bool exists

                    Accessible.description: location
                    Accessible.name: name
                    Accessible.role: Accessible.ListItem
                    color: hovered ? Colors.popup : Colors.sheetRow
                    help: heading.truncated || place.truncated ? name + "\n" + location : ""
                    implicitHeight: Math.max(48, content.implicitHeight + 10)
                    objectName: "kept." + index
                    width: list.rowWidth

                    onMenuAsked: below => menu.open(line, below)

                    MenuLoader {
                        id: menu

                        menu: PathMenu {
                            files: line.exists
                            owner: line.objectName
                            paths: root.kept
                            place: line.index
                            title: line.name

                            ContextMenuItem {
                                objectName: line.objectName + ".menu.offer"
                                text: L.tr("重新提供")

                                onTriggered: root.kept.offerAgain(line.index)
                            }
                        }
                    }

                    RowLayout {
                        id: content

                        anchors.fill: parent
                        anchors.leftMargin: 12
                        anchors.rightMargin: 8
                        spacing: 10

                        SymbolTile {
                            size: Metrics.smallTile
                            symbol: line.symbol
                            tint: line.exists ? Colors.indigo : Colors.gray
                        }

                        ColumnLayout {
                            spacing: 1

                            BodyText {
                                id: heading

                                Layout.fillWidth: true
                                color: line.exists ? Colors.vmText : Colors.vmSecondaryText
                                elide: Text.ElideMiddle
                                font.weight: Font.DemiBold
                                text: line.name
                            }

                            Caption {
                                id: place

                                Layout.fillWidth: true
                                elide: Text.ElideMiddle
                                text: line.location
                            }
                        }

                        SoftIconButton {
                            Accessible.name: help + " " + line.name
                            flat: true
                            focusPolicy: Qt.ClickFocus
                            help: L.tr("在 Finder 中显示")
                            ink: Colors.vmSecondaryText
                            objectName: line.objectName + ".reveal"
                            size: Metrics.rowButton
                            symbol: "magnifyingglass"
                            visible: line.exists

                            onClicked: root.kept.reveal(line.index)
                        }

                        SecondaryButton {
                            Accessible.name: text + " " + line.name
                            compact: true
                            focusPolicy: Qt.ClickFocus
                            objectName: line.objectName + ".offer"
                            text: L.tr("重新提供")

                            onClicked: root.kept.offerAgain(line.index)
                        }
                    }
                }
            }

            EmptyStateView {
                anchors.centerIn: parent
                isScanning: false
                text: L.tr("没有保留的项目")
                visible: root.kept.count === 0
                width: parent.width
            }
        }

        PrimaryButton {
            id: done

            Layout.alignment: Qt.AlignRight
            objectName: "kept.done"
            text: L.tr("完成")

            onClicked: root.close()
        }
    }
}
