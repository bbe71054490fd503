import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// Says that the program should run as the person whose files are meant.
GlassPanel {
    id: root

    signal closed

    Accessible.description: explanation.text
    Accessible.name: heading.text
    Accessible.role: Accessible.Note
    implicitHeight: Math.max(52, line.implicitHeight + 16)

    RowLayout {
        id: line

        anchors.fill: parent
        anchors.leftMargin: 16
        anchors.rightMargin: 12
        spacing: 14

        Symbol {
            color: Colors.orange
            name: "exclamationmark.shield"
            size: 20
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2

            BodyText {
                id: heading

                Layout.fillWidth: true
                font.weight: Font.DemiBold
                objectName: "rootNotice"
                text: L.tr("Vellmoor 正以 root 身份运行")
            }

            Caption {
                id: explanation

                Layout.fillWidth: true
                maximumLineCount: 2
                objectName: "rootNotice.text"
                text: L.tr("它只会扫描和清理 root 自己的用户目录。请退出后用你自己的账户启动。")
                wrapMode: Text.Wrap
            }
        }

        SoftIconButton {
            flat: true
            help: L.tr("关闭")
            objectName: "rootNotice.close"
            symbol: "xmark.circle"

            onClicked: root.closed()
        }
    }
}
