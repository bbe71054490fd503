// qmllint disable unqualified
import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Lists
import Vellmoor.Models
import Vellmoor.Theme

// The memory's state, what can be freed, and who uses most of it.
ScrollColumn {
    id: root

    spacing: Metrics.gap

    required property WindowModel vm

    MemoryStatusPanel {
        Layout.fillWidth: true
        memory: root.vm.memory
        parts: root.vm.memoryParts
    }

    GlassPanel {
        Layout.fillWidth: true
        implicitHeight: optimizable.implicitHeight + 16

        ColumnLayout {
            id: optimizable

            anchors.left: parent.left
            anchors.margins: 8
            anchors.right: parent.right
            anchors.top: parent.top
            spacing: 2

            ListHeader {
                Layout.leftMargin: 4
                title: L.tr("可优化项目")
            }

            Repeater {
                model: root.vm.memoryItems

                RowDelegate {
                    Layout.fillWidth: true
                    rows: root.vm.memoryItems
                }
            }

            EmptyStateView {
                Layout.bottomMargin: 12
                Layout.fillWidth: true
                Layout.topMargin: 8
                isScanning: root.vm.scan.scanning
                small: true
                visible: root.vm.memoryItems.itemCount === 0
            }
        }
    }

    MemoryAppsPanel {
        Layout.fillWidth: true
        vm: root.vm
    }
}
