// qmllint disable unqualified
import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// The eight modules, and below them the language and the theme. Up and Down go from module to module. A narrow one has
// symbols only.
Rectangle {
    id: root

    required property WindowModel vm
    property bool narrow: false

    signal aboutAsked
    signal keptAsked

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
        anchors.margins: 8
        anchors.bottomMargin: 10
        anchors.topMargin: 14
        spacing: 2

        RowLayout {
            Layout.bottomMargin: 10
            Layout.leftMargin: root.narrow ? 6 : 8
            spacing: Metrics.wideGap

            SymbolTile {
                grows: !root.narrow
                size: 40
                symbol: "sparkles"
                tint: Colors.cyan
            }

            ColumnLayout {
                spacing: 0
                visible: !root.narrow

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

        Flickable {
            id: view

            Layout.fillHeight: true
            Layout.fillWidth: true
            boundsBehavior: Flickable.StopAtBounds
            clip: contentHeight > height
            contentHeight: modules.implicitHeight
            interactive: contentHeight > height

            ColumnLayout {
                id: modules

                spacing: 2
                width: view.width

                Repeater {
                    id: rows

                    model: root.vm.modules

                    SidebarRow {
                        required property int index

                        Keys.onDownPressed: root.go(index + 1)
                        Keys.onUpPressed: root.go(index - 1)
                        Layout.fillWidth: true
                        isSelected: module === root.vm.module
                        low: root.height / Metrics.growth < Metrics.lowBelow
                        narrow: root.narrow

                        onClicked: root.vm.module = module
                    }
                }
            }

            FocusFollower {
                view: view
            }
        }

        GridLayout {
            Layout.alignment: root.narrow ? Qt.AlignHCenter : Qt.AlignLeft
            Layout.leftMargin: root.narrow ? 0 : 8
            Layout.topMargin: 6
            columnSpacing: 6
            columns: root.narrow ? 1 : 4
            rowSpacing: 6

            SecondaryButton {
                Layout.alignment: Qt.AlignHCenter
                Accessible.name: Texts.language === "zh" ? "English" : "中文"
                compact: true
                objectName: "languageSwitch"
                symbol: "globe"
                text: root.narrow ? "" : Accessible.name

                onClicked: Texts.switchLanguage()

                HelpTip {
                    shown: root.narrow && parent.hovered
                    text: parent.Accessible.name
                }
            }

            ThemeSwitch {
                Layout.alignment: Qt.AlignHCenter
                wordless: root.narrow
            }

            SoftIconButton {
                Layout.alignment: Qt.AlignHCenter
                flat: true
                help: L.tr("保留的项目")
                objectName: "keptButton"
                size: Metrics.rowButton
                symbol: "pin"

                onClicked: root.keptAsked()
            }

            SoftIconButton {
                Layout.alignment: Qt.AlignHCenter
                flat: true
                help: L.tr("关于 Vellmoor")
                objectName: "aboutButton"
                size: Metrics.rowButton
                symbol: "info.circle"

                onClicked: root.aboutAsked()
            }
        }
    }
}
