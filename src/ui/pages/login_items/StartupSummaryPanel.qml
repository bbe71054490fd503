import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// How many items start at login.
GlassPanel {
    id: root

    required property WindowModel vm

    implicitHeight: content.implicitHeight + 24

    ColumnLayout {
        id: content

        anchors.left: parent.left
        anchors.leftMargin: Metrics.panelPadding
        anchors.right: parent.right
        anchors.rightMargin: Metrics.panelPadding
        anchors.top: parent.top
        anchors.topMargin: 12
        spacing: Metrics.gap

        PanelHeader {
            symbol: "power"
            title: L.tr("启动项概览")
        }

        FigureRow {
            title: L.tr("总启动项")
            value: L.items(root.vm.startup.count)
        }

        MetricRow {
            Layout.fillWidth: true
            level: root.vm.startup.count > 0 ? root.vm.startup.enabledCount / root.vm.startup.count : 0
            tint: Colors.green
            title: L.tr("已启用")
            value: L.items(root.vm.startup.enabledCount)
        }
    }
}
