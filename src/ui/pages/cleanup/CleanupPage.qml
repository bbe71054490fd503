import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Lists
import Vellmoor.Models
import Vellmoor.Theme

// The list of categories that most modules show.
GlassPanel {
    id: root

    required property WindowModel vm
    // What it would take to show every row.
    readonly property real wholeHeight: list.y + list.rowsHeight + 22

    ColumnLayout {
        anchors.bottomMargin: 1
        anchors.fill: parent
        anchors.margins: 10
        spacing: Metrics.gap

        ListHeader {
            Layout.fillWidth: true
            Layout.leftMargin: 4
            rows: root.vm.items
            title: L.tr("推荐清理")

            onSearchLeft: list.forceActiveFocus(Qt.TabFocusReason)

            FilterBar {
                current: root.vm.items.filter

                onChosen: value => root.vm.items.filter = value
            }
        }

        ResultList {
            id: list

            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.rightMargin: -10
            rows: root.vm.items
            scanning: root.vm.scan.scanning
            title: L.tr("推荐清理")
        }
    }
}
