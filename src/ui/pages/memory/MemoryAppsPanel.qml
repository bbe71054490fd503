// qmllint disable unqualified
import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Lists
import Vellmoor.Models
import Vellmoor.Theme

// The applications that use the most memory.
GlassPanel {
    id: root

    required property WindowModel vm

    implicitHeight: content.implicitHeight + 16

    ColumnLayout {
        id: content

        anchors.left: parent.left
        anchors.margins: 8
        anchors.right: parent.right
        anchors.top: parent.top
        spacing: Metrics.smallGap

        ListHeader {
            Layout.fillWidth: true
            Layout.leftMargin: 4
            title: L.tr("高内存应用")

            SoftIconButton {
                enabled: root.vm.scan.ready
                help: L.tr("刷新内存状态")
                objectName: "refreshMemory"
                size: Metrics.rowButton
                symbol: "arrow.clockwise"

                onClicked: root.vm.refresh()
            }

            SecondaryButton {
                compact: true
                objectName: "systemMonitor"
                symbol: "chart.line.uptrend.xyaxis"
                text: L.tr("活动监视器")

                onClicked: root.vm.openSystemMonitor()
            }
        }

        Caption {
            Layout.fillWidth: true
            Layout.leftMargin: 4
            elide: Text.ElideNone
            spoken: true
            text: L.tr("关闭暂时不用的应用，通常比反复释放缓存更有效")
            wrapMode: Text.Wrap
        }

        Repeater {
            model: root.vm.memoryApps

            MemoryAppRow {
                Layout.fillWidth: true
                rows: root.vm.memoryApps

                onMonitorAsked: root.vm.openSystemMonitor()
                onQuitAsked: root.vm.question.askQuit(index)
            }
        }

        EmptyStateView {
            Layout.bottomMargin: 12
            Layout.fillWidth: true
            Layout.topMargin: 8
            isScanning: root.vm.scan.scanning
            small: true
            visible: root.vm.memoryApps.count === 0
        }
    }
}
