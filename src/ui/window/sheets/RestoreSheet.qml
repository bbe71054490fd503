// qmllint disable unqualified
import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Lists
import Vellmoor.Models
import Vellmoor.Theme

// What stayed in the Trash though it was to be put back, and why.
Sheet {
    id: root

    required property WindowModel vm
    readonly property RestoreModel restore: vm.restore

    objectName: "restore"
    title: L.tr("部分项目未能放回")
    wantedHeight: Math.min(Metrics.grown(480), Metrics.grown(190) + list.contentHeight)
    wantedWidth: Metrics.grown(640)

    onClosed: vm.closeRestore()
    onOpened: done.forceActiveFocus(Qt.TabFocusReason)

    contentItem: ColumnLayout {
        spacing: Metrics.wideGap

        Heading {
            Layout.fillWidth: true
            objectName: "restore.title"
            text: root.title
        }

        BodyText {
            Layout.fillWidth: true
            color: Colors.vmSecondaryText
            elide: Text.ElideNone
            objectName: "restore.message"
            spoken: true
            text: root.restore.message
            wrapMode: Text.Wrap
        }

        RowList {
            id: list

            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.rightMargin: -10
            objectName: "restore.list"
            rows: root.restore
            title: root.title

            delegate: RowFrame {
                id: line

                required property int index
                required property string name
                required property string reason
                required property bool taken

                Accessible.description: reason
                Accessible.name: name
                Accessible.role: Accessible.ListItem
                color: hovered ? Colors.popup : Colors.sheetRow
                implicitHeight: Math.max(44, content.implicitHeight + 10)
                width: list.rowWidth

                onMenuAsked: below => menu.open(line, below)

                MenuLoader {
                    id: menu

                    menu: PathMenu {
                        owner: "restore." + line.index
                        paths: root.restore
                        place: line.index
                        title: line.name
                    }
                }

                RowLayout {
                    id: content

                    anchors.fill: parent
                    anchors.leftMargin: 12
                    anchors.rightMargin: 8
                    spacing: Metrics.gap

                    ColumnLayout {
                        spacing: 1

                        BodyText {
                            Layout.fillWidth: true
                            elide: Text.ElideMiddle
                            font.weight: Font.DemiBold
                            text: line.name
                        }

                        Caption {
                            Layout.fillWidth: true
                            elide: Text.ElideNone
                            text: line.reason
                            wrapMode: Text.Wrap
                        }
                    }

                    SecondaryButton {
                        Accessible.name: text + " " + line.name
                        compact: true
                        objectName: "restore.showBoth." + line.index
                        text: L.tr("显示两者")
                        visible: line.taken

                        onClicked: root.restore.showBoth(line.index)
                    }
                }
            }
        }

        PrimaryButton {
            id: done

            Layout.alignment: Qt.AlignRight
            objectName: "restore.done"
            text: L.tr("完成")

            onClicked: root.close()
        }
    }
}
