import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// Smart Scan's header: the ring, what was found, and the scan button.
GlassPanel {
    id: root

    required property WindowModel vm
    readonly property ScanModel scan: vm.scan

    implicitHeight: Metrics.dashboardHeight

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 20
        anchors.rightMargin: 20
        spacing: 24

        ScanRing {
            scan: root.scan
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 14

            RowLayout {
                spacing: Metrics.wideGap

                HeaderTitle {
                    Layout.fillWidth: true
                    scan: root.scan
                    status: root.scan.scanning ? root.scan.stage : root.scan.description
                }

                ScanButton {
                    vm: root.vm
                }
            }

            RowLayout {
                spacing: 10

                StatusPill {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    symbol: "internaldrive"
                    tint: Colors.green
                    title: L.tr("磁盘状态")
                    value: L.tr("良好")
                }

                StatusPill {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    symbol: "shield"
                    tint: Colors.cyan
                    title: L.tr("可处理项")
                    value: root.scan.itemCount
                }

                StatusPill {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1.2
                    symbol: "clock"
                    tint: Colors.orange
                    title: L.tr("上次扫描")
                    value: root.scan.lastScan
                }
            }
        }
    }
}
