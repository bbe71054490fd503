import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// What runs in the background, and how a clean is guarded.
GlassPanel {
    id: root

    required property WindowModel vm
    readonly property ScanModel scan: vm.scan

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
            symbol: "waveform.path.ecg"
            title: L.tr("系统健康")
        }

        FigureRow {
            muted: !root.scan.scanned
            title: L.tr("登录启动项")
            value: L.items(root.scan.startupCount)
        }

        FigureRow {
            muted: !root.scan.scanned
            title: L.tr("后台目录")
            value: L.items(root.scan.backgroundCount)
        }

        FigureRow {
            muted: !root.scan.scanned
            title: L.tr("隐私痕迹")
            value: L.items(root.scan.privacyCount)
        }

        RowLayout {
            spacing: 6

            Symbol {
                color: Colors.green
                name: "checkmark.shield"
                size: 15
            }

            Caption {
                Layout.fillWidth: true
                spoken: true
                text: L.tr("清理前会显示完整预览")
            }
        }
    }
}
