import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// The module's figures: recommended, estimated, selected.
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
            symbol: "list.bullet"
            title: L.tr("模块概览")
        }

        FigureRow {
            muted: !root.vm.scan.scanned
            title: L.tr("建议处理")
            value: L.items(root.vm.offer.recommendedCount)
        }

        FigureRow {
            muted: !root.vm.scan.scanned
            tint: Colors.ink(Colors.green)
            title: L.tr("预计释放")
            value: root.vm.scan.cleanable
        }

        FigureRow {
            muted: !root.vm.scan.scanned
            objectName: "summary.selected"
            tint: Colors.ink(Colors.cyan)
            title: L.tr("已选择")
            value: root.vm.offer.selectedSize
        }
    }
}
