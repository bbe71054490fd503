import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// How an action went, over the page, until it is closed or a while has passed.
Item {
    id: root

    required property WindowModel vm
    required property real maximumWidth

    Accessible.name: vm.notice
    Accessible.role: vm.noticeIsFailure ? Accessible.AlertMessage : Accessible.StaticText
    height: panel.height
    objectName: "notice"
    visible: vm.notice !== ""
    width: Math.min(maximumWidth, line.implicitWidth + 32)

    GlassPanel {
        id: panel

        color: Colors.popup
        height: line.implicitHeight + 16
        radius: Metrics.rowRadius
        width: parent.width

        RowLayout {
            id: line

            anchors.fill: parent
            anchors.leftMargin: 16
            anchors.rightMargin: 8
            spacing: Metrics.gap

            Symbol {
                color: root.vm.noticeIsFailure ? Colors.red : Colors.cyan
                name: root.vm.noticeIsFailure ? "exclamationmark.triangle.fill" : "info.circle"
                size: 16
            }

            BodyText {
                Layout.fillWidth: true
                elide: Text.ElideNone
                objectName: "notice.text"
                text: root.vm.notice
                wrapMode: Text.Wrap
            }

            SoftIconButton {
                flat: true
                help: L.tr("关闭")
                objectName: "notice.close"
                size: Metrics.rowButton
                symbol: "xmark.circle"

                onClicked: root.vm.closeNotice()
            }
        }
    }
}
