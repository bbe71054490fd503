import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Lists
import Vellmoor.Models
import Vellmoor.Theme

// The applications that can be removed.
GlassPanel {
    id: root

    required property WindowModel vm

    ColumnLayout {
        anchors.bottomMargin: 1
        anchors.fill: parent
        anchors.margins: 10
        spacing: Metrics.gap

        ListHeader {
            Layout.fillWidth: true
            Layout.leftMargin: 4
            counter: L.tr1("%d 个待卸载", L.number(root.vm.items.selectedCount))
            rows: root.vm.items
            title: L.tr("应用")

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
            category: Qt.resolvedUrl("AppUninstallerRow.qml")
            rows: root.vm.items
            scanning: root.vm.scan.scanning
            title: L.tr("应用")
        }
    }
}
