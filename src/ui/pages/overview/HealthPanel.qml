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

    implicitHeight: content.implicitHeight + 2 * Metrics.panelPadding

    ColumnLayout {
        id: content

        anchors.left: parent.left
        anchors.margins: Metrics.panelPadding
        anchors.right: parent.right
        anchors.top: parent.top
        spacing: 10

        PanelHeader {
            symbol: "waveform.path.ecg"
            title: L.tr("系统健康")
        }

        FigureRow {
            title: L.tr("登录启动项")
            value: L.tr1("%d 项", root.scan.startupCount)
        }

        FigureRow {
            title: L.tr("后台目录")
            value: L.tr1("%d 项", root.scan.backgroundCount)
        }

        FigureRow {
            title: L.tr("隐私痕迹")
            value: L.tr1("%d 项", root.scan.privacyCount)
        }

        RowLayout {
            spacing: 6

            Symbol {
                color: Colors.green
                name: "checkmark.shield"
                size: 13
            }

            Caption {
                Layout.fillWidth: true
                spoken: true
                text: L.tr("清理前会显示完整预览")
            }
        }
    }
}
