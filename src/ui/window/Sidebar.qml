// qmllint disable unqualified
import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// The eight modules and the language switch. Up and Down go from module to module.
Rectangle {
    id: root

    required property WindowModel vm

    // Shows the module at that position, as far as there is one, and leaves the keyboard there.
    function go(position: int): void {
        const row = rows.itemAt(Math.max(0, Math.min(position, rows.count - 1))) as SidebarRow;
        row.forceActiveFocus(Qt.TabFocusReason);
        row.clicked();
    }

    color: Colors.sidebar

    // The keyboard begins here.
    Component.onCompleted: rows.itemAt(0).forceActiveFocus()

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
                    spoken: true
                    text: L.tr("磁盘清理工具")
                }
            }
        }

        Repeater {
            id: rows

            model: root.vm.modules

            SidebarRow {
                required property int index

                Keys.onDownPressed: root.go(index + 1)
                Keys.onUpPressed: root.go(index - 1)
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
