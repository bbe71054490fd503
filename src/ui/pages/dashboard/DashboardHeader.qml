import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// Smart Scan's header: the ring, what was found, and the scan button. Once there are results it leaves the room to them.
GlassPanel {
    id: root

    required property WindowModel vm
    property bool compact: false
    readonly property ScanModel scan: vm.scan
    // Too narrow for three pills beside each other.
    readonly property bool narrow: width / Metrics.growth < 560

    implicitHeight: Math.max(compact ? Metrics.compactDashboardHeight : Metrics.dashboardHeight, line.implicitHeight + 16)

    RowLayout {
        id: line

        anchors.fill: parent
        anchors.leftMargin: root.compact ? 10 : 20
        anchors.rightMargin: root.compact ? 14 : 20
        spacing: root.compact ? 14 : 24

        ScanRing {
            compact: root.compact
            scan: root.scan
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: root.compact ? Metrics.gap : 14

            RowLayout {
                spacing: Metrics.wideGap

                HeaderTitle {
                    Layout.fillWidth: true
                    compact: root.compact
                    scan: root.scan
                    status: root.scan.scanning ? root.scan.stage : root.scan.scanned ? root.scan.findings : root.scan.description
                }

                ScanButton {
                    vm: root.vm
                }
            }

            GridLayout {
                columnSpacing: Metrics.gap
                columns: root.narrow ? 1 : 3
                rowSpacing: Metrics.smallGap

                StatusPill {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    compact: root.compact
                    muted: !root.scan.scanned
                    help: root.scan.scanned ? "" : L.tr("扫描后显示实际数据")
                    symbol: "internaldrive"
                    tint: root.scan.scanned ? Colors.green : Colors.gray
                    title: L.tr("磁盘状态")
                    value: L.tr("良好")
                }

                StatusPill {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    compact: root.compact
                    muted: !root.scan.scanned
                    symbol: "shield"
                    tint: Colors.cyan
                    title: L.tr("可处理项")
                    value: L.number(root.scan.itemCount)
                }

                StatusPill {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1.2
                    compact: root.compact
                    symbol: "clock"
                    tint: Colors.orange
                    title: L.tr("上次扫描")
                    value: root.scan.lastScan
                }
            }
        }
    }
}
