import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// How many items start at login.
GlassPanel {
    id: root

    required property WindowModel vm

    implicitHeight: content.implicitHeight + 2 * Metrics.panelPadding

    ColumnLayout {
        id: content

        anchors.left: parent.left
        anchors.margins: Metrics.panelPadding
        anchors.right: parent.right
        anchors.top: parent.top
        spacing: 10

        PanelHeader {
            symbol: "power"
            title: L.tr("启动项概览")
        }

        FigureRow {
            title: L.tr("总启动项")
            value: L.tr1("%d 项", root.vm.startup.count)
        }

        MetricRow {
            Layout.fillWidth: true
            level: root.vm.startup.count > 0 ? root.vm.startup.enabledCount / root.vm.startup.count : 0
            tint: Colors.green
            title: L.tr("已启用")
            value: L.tr1("%d 项", root.vm.startup.enabledCount)
        }
    }
}
