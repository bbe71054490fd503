// qmllint disable unqualified
import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// The eight modules and the language switch.
Rectangle {
    id: root

    required property WindowModel vm

    color: Colors.sidebar

    Rectangle {
        anchors.bottom: parent.bottom
        anchors.right: parent.right
        anchors.top: parent.top
        color: Colors.vmLine
        width: 1
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 14
        anchors.topMargin: 22
        spacing: 2

        RowLayout {
            Layout.bottomMargin: 16
            Layout.leftMargin: 8
            Layout.preferredHeight: Math.max(Metrics.topBarHeight - 18, implicitHeight)
            spacing: Metrics.wideGap

            SymbolTile {
                size: 40
                symbol: "sparkles"
                tint: Colors.cyan
            }

            ColumnLayout {
                spacing: 0

                Heading {
                    Layout.fillWidth: true
                    text: "Vellmoor"
                }

                Caption {
                    Layout.fillWidth: true
                    text: L.tr("磁盘清理工具")
                }
            }
        }

        Repeater {
            model: root.vm.modules

            SidebarRow {
                Layout.fillWidth: true
                isSelected: module === root.vm.module

                onClicked: root.vm.module = module
            }
        }

        Item {
            Layout.fillHeight: true
        }

        SecondaryButton {
            Layout.leftMargin: 4
            compact: true
            objectName: "languageSwitch"
            symbol: "globe"
            text: Texts.language === "zh" ? "English" : "中文"

            onClicked: Texts.switchLanguage()
        }
    }
}
