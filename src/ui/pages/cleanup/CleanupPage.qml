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

    ColumnLayout {
        anchors.bottomMargin: 1
        anchors.fill: parent
        anchors.margins: 12
        spacing: Metrics.wideGap

        ListHeader {
            Layout.fillWidth: true
            Layout.leftMargin: 4
            title: L.tr("推荐清理")

            FilterBar {
                current: root.vm.items.filter

                onChosen: value => root.vm.items.filter = value
            }
        }

        ResultList {
            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.rightMargin: -10
            rows: root.vm.items
            scanning: root.vm.scan.scanning
            title: L.tr("推荐清理")
        }
    }
}
