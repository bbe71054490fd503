import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// Which folders may be read.
GlassPanel {
    id: root

    required property WindowModel vm
    readonly property bool limited: vm.limitation !== ""

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
            symbol: "hand.raised"
            title: L.tr("权限状态")
        }

        BodyText {
            Layout.fillWidth: true
            color: Colors.vmSecondaryText
            spoken: true
            text: L.tr("等待扫描后检测权限状态")
            visible: root.vm.permissions.count === 0
            wrapMode: Text.Wrap
        }

        Repeater {
            model: root.vm.permissions

            PermissionRow {
                Layout.fillWidth: true
            }
        }

        RowLayout {
            spacing: Metrics.gap

            SecondaryButton {
                compact: true
                objectName: "recheckPermissions"
                symbol: "arrow.clockwise"
                text: L.tr("重新检测权限")

                onClicked: root.vm.refreshPermissions()
            }

            SecondaryButton {
                compact: true
                objectName: "openPermissions"
                symbol: "lock.open.fill"
                text: L.tr("打开完全磁盘访问权限")
                visible: root.limited

                onClicked: root.vm.openPermissionSettings()
            }
        }
    }
}
