import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// Says which places a scan could not read, and leads to where that can be changed.
GlassPanel {
    id: root

    required property string limitations

    signal openSettings

    implicitHeight: Math.max(60, line.implicitHeight + 20)

    RowLayout {
        id: line

        anchors.fill: parent
        anchors.leftMargin: 16
        anchors.rightMargin: 12
        spacing: 14

        Symbol {
            color: Colors.cyan
            name: "lock.open.fill"
            size: 20
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2

            BodyText {
                Layout.fillWidth: true
                font.weight: Font.DemiBold
                spoken: true
                text: L.tr("想让扫描结果更准确？")
            }

            Caption {
                Layout.fillWidth: true
                maximumLineCount: 2
                objectName: "limitation"
                spoken: true
                text: root.limitations
                wrapMode: Text.Wrap
            }
        }

        SecondaryButton {
            objectName: "openSettings"
            text: L.tr("打开权限设置")

            onClicked: root.openSettings()
        }
    }
}
