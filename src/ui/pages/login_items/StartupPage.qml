// qmllint disable unqualified
import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Lists
import Vellmoor.Models
import Vellmoor.Theme

// What starts at login, and the switch of each item: Up and Down move, Space switches, Return shows the file.
GlassPanel {
    id: root

    required property WindowModel vm
    readonly property bool updating: vm.changingStartupRow >= 0

    ColumnLayout {
        anchors.bottomMargin: 1
        anchors.fill: parent
        anchors.margins: 10
        spacing: Metrics.gap

        ListHeader {
            Layout.fillWidth: true
            Layout.leftMargin: 4
            title: L.tr("启动项管理")

            SoftIconButton {
                enabled: root.vm.scan.ready
                help: L.tr("刷新启动项")
                objectName: "refreshStartup"
                size: Metrics.rowButton
                symbol: "arrow.clockwise"

                onClicked: root.vm.refresh()
            }

            SecondaryButton {
                compact: true
                objectName: "loginItemsSettings"
                symbol: "gearshape"
                text: L.tr("系统登录项")

                onClicked: root.vm.openLoginItemsSettings()
            }
        }

        Caption {
            Layout.fillWidth: true
            Layout.leftMargin: 4
            Layout.topMargin: -6
            elide: Text.ElideNone
            objectName: "startupNote"
            spoken: true
            text: root.updating ? L.tr("正在更新启动项...") : L.tr("禁用后会移到 LaunchAgents.disabled，可随时恢复")
            wrapMode: Text.Wrap
        }

        RowLayout {
            id: failure

            Accessible.name: root.vm.actionFailure
            Accessible.role: Accessible.AlertMessage
            Layout.fillWidth: true
            Layout.leftMargin: 4
            objectName: "startupFailure"
            spacing: 8
            visible: root.vm.actionFailure !== ""

            Symbol {
                color: Colors.red
                name: "exclamationmark.triangle.fill"
                size: 16
            }

            BodyText {
                Layout.fillWidth: true
                elide: Text.ElideNone
                objectName: "startupFailure.text"
                text: root.vm.actionFailure
                wrapMode: Text.Wrap
            }

            SoftIconButton {
                flat: true
                help: L.tr("关闭")
                objectName: "startupFailure.close"
                size: Metrics.rowButton
                symbol: "xmark.circle"

                onClicked: root.vm.closeActionFailure()
            }
        }

        Rectangle {
            Layout.fillWidth: true
            color: Colors.vmLine
            implicitHeight: 1
        }

        ListHeader {
            Layout.fillWidth: true
            Layout.leftMargin: 4
            counter: L.tr1("%d 个已启用", L.number(root.vm.startup.enabledCount))
            small: true
            title: L.tr("启动项")
        }

        RowList {
            id: list

            function ask(): void {
                const row = currentItem as StartupItemRow;
                if (row && row.canChange)
                    row.changeAsked();
            }

            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.rightMargin: -10
            objectName: "startupList"
            rows: root.vm.startup
            title: L.tr("启动项")

            onSwitched: ask()

            delegate: StartupItemRow {
                isWorking: root.vm.changingStartupRow === index
                locked: root.vm.scan.scanning || root.vm.scan.cleaning
                rows: root.vm.startup
                width: list.rowWidth

                onChangeAsked: root.vm.question.askStartup(index)
                onRevealAsked: root.vm.startup.reveal(index)
            }
            footer: Item {
                height: extra.visible ? extra.height + 12 : 0
                width: list.rowWidth

                Column {
                    id: extra

                    spacing: 6
                    topPadding: 12
                    visible: root.vm.startupExtras.itemCount > 0
                    width: parent.width

                    Subheading {
                        bottomPadding: 4
                        leftPadding: 4
                        rightPadding: 4
                        text: L.tr("可优化项目")
                        width: parent.width
                    }

                    Repeater {
                        model: extra.visible ? root.vm.startupExtras : null

                        RowDelegate {
                            rows: root.vm.startupExtras
                            width: extra.width
                        }
                    }
                }
            }

            ScrollFade {
                anchors.left: parent.left
                anchors.right: parent.right
                anchors.rightMargin: 10
                parent: list
                view: list
                y: list.height - height
            }

            FocusFollower {
                view: list
            }

            EmptyStateView {
                anchors.centerIn: parent
                anchors.horizontalCenterOffset: -5 // the list's margin
                isScanning: root.vm.scan.scanning
                visible: root.vm.startup.count === 0 && root.vm.startupExtras.itemCount === 0
                width: parent.width - 10
            }
        }
    }
}
