import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Lists
import Vellmoor.Models
import Vellmoor.Theme

// The large files with their two filters and the bulk selection.
GlassPanel {
    id: root

    required property WindowModel vm
    readonly property LargeFileListModel files: vm.largeFiles

    ColumnLayout {
        anchors.bottomMargin: 1
        anchors.fill: parent
        anchors.margins: 10
        spacing: Metrics.gap

        ListHeader {
            Layout.fillWidth: true
            Layout.leftMargin: 4
            counter: L.count("%d 个结果", "1 个结果", root.files.resultCount)
            rows: root.files
            title: L.tr("大文件")

            onSearchLeft: list.forceActiveFocus(Qt.TabFocusReason)

            Picker {
                currentIndex: root.files.kind
                implicitWidth: Metrics.grown(100)
                model: root.files.kindTitles
                objectName: "kindFilter"
                title: L.tr("种类")

                onActivated: index => root.files.kind = index
            }

            Picker {
                currentIndex: root.files.age
                implicitWidth: Metrics.grown(100)
                model: root.files.ageTitles
                objectName: "ageFilter"
                title: L.tr("修改时间")

                onActivated: index => root.files.age = index
            }
        }

        RowLayout {
            spacing: Metrics.gap

            SecondaryButton {
                compact: true
                enabled: root.files.itemCount > 0
                objectName: "selectFiltered"
                symbol: "checkmark.circle"
                text: L.tr("全选当前筛选")

                onClicked: root.files.setAllSelected(true)
            }

            SecondaryButton {
                compact: true
                enabled: root.files.itemCount > 0
                objectName: "deselectFiltered"
                symbol: "xmark.circle"
                text: L.tr("取消当前筛选")

                onClicked: root.files.setAllSelected(false)
            }

            Item {
                Layout.fillWidth: true
            }

            Badge {
                objectName: "list.selection"
                spoken: true
                text: L.tr1("%d 个已选", L.number(root.files.selectedCount))
                tint: Colors.green
            }
        }

        ResultList {
            id: list

            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.rightMargin: -10
            category: Qt.resolvedUrl("LargeFileRow.qml")
            rows: root.files
            scanning: root.vm.scan.scanning
            title: L.tr("大文件")
        }

        RowLayout {
            Layout.bottomMargin: Metrics.gap
            Layout.leftMargin: 4
            spacing: Metrics.gap
            visible: root.files.moreText !== ""

            BodyText {
                Layout.fillWidth: true
                color: Colors.vmSecondaryText
                objectName: "moreFiles"
                spoken: true
                text: root.files.moreText
            }

            SecondaryButton {
                compact: true
                objectName: "listAll"
                text: L.tr("显示全部")

                onClicked: {
                    root.files.listAll();
                    list.forceActiveFocus(Qt.TabFocusReason);
                }
            }
        }
    }
}
