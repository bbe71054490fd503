// qmllint disable unqualified
import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// The largest files of the last scan.
GlassPanel {
    id: root

    required property WindowModel vm
    readonly property int rowHeight: Metrics.grown(34)

    signal viewAll

    implicitHeight: content.implicitHeight + 24

    ColumnLayout {
        id: content

        anchors.left: parent.left
        anchors.leftMargin: Metrics.panelPadding
        anchors.right: parent.right
        anchors.rightMargin: Metrics.panelPadding
        anchors.top: parent.top
        anchors.topMargin: 12
        spacing: 6

        RowLayout {
            PanelHeader {
                Layout.fillWidth: true
                symbol: "doc"
                title: L.tr("文件预览")
            }

            SecondaryButton {
                compact: true
                objectName: "viewAll"
                text: L.tr("查看全部")

                onClicked: root.viewAll()
            }
        }

        ListView {
            Accessible.name: L.tr("文件预览")
            Accessible.role: Accessible.List
            Layout.fillWidth: true
            cacheBuffer: 0
            clip: true
            implicitHeight: Math.min(count, 4) * (root.rowHeight + spacing) - spacing
            interactive: false
            model: root.vm.candidates
            spacing: 3

            delegate: FileCandidateRow {
                height: root.rowHeight
                rows: root.vm.candidates
                width: ListView.view.width
            }
        }
    }
}
