import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Lists
import Vellmoor.Models
import Vellmoor.Theme

// The disk: its name, how full it is, and the bar.
GlassPanel {
    id: root

    required property WindowModel vm

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
            symbol: "internaldrive"
            title: root.vm.volumeLabel
        }

        BodyText {
            Layout.fillWidth: true
            color: Colors.vmSecondaryText
            objectName: "diskSummary"
            spoken: true
            text: root.vm.scan.diskSummary
        }

        PartsBar {
            Layout.fillWidth: true
            opacity: root.vm.scan.scanned ? 1 : 0.35
            segments: root.vm.segments

            HoverHandler {
                id: hover
            }

            HelpTip {
                shown: hover.hovered && !root.vm.scan.scanned
                text: L.tr("扫描后显示实际数据")
            }
        }

        RowLayout {
            spacing: 14

            Repeater {
                model: root.vm.segments

                RowLayout {
                    id: legend

                    required property string title
                    required property string tint

                    spacing: 5

                    Rectangle {
                        color: Colors.tint(legend.tint)
                        implicitHeight: 8
                        implicitWidth: 8
                        radius: 4
                    }

                    Caption {
                        text: legend.title
                    }
                }
            }
        }
    }
}
