import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// What is selected, what is going on, and the module's main action, on one line.
GlassPanel {
    id: root

    required property WindowModel vm
    readonly property CleanupListModel list: vm.module === "largeFiles" ? vm.largeFiles : vm.items

    signal cleanAsked
    signal previewAsked

    implicitHeight: Math.max(Metrics.bottomBarHeight, line.implicitHeight + 12)

    RowLayout {
        id: line

        anchors.fill: parent
        anchors.leftMargin: 18
        anchors.rightMargin: 10
        spacing: Metrics.gap

        ColumnLayout {
            spacing: 0

            RowLayout {
                spacing: Metrics.gap

                Subheading {
                    Accessible.role: Accessible.StaticText
                    objectName: "selectedText"
                    text: root.vm.offer.selectedText
                }

                Badge {
                    objectName: "hiddenSelection"
                    spoken: true
                    text: root.list.hiddenSelection
                    tint: Colors.orange
                    visible: text !== ""
                }
            }

            RowLayout {
                spacing: Metrics.gap

                Caption {
                    Layout.fillWidth: !current.visible
                    objectName: "statusMessage"
                    spoken: true
                    text: root.vm.scan.status

                    HoverHandler {
                        id: hover
                    }

                    HelpTip {
                        shown: hover.hovered && parent.truncated
                        text: root.vm.scan.status
                    }
                }

                Caption {
                    id: current

                    Layout.fillWidth: true
                    elide: Text.ElideMiddle
                    objectName: "currentPath"
                    spoken: true
                    text: root.vm.scan.current
                    visible: text !== ""
                }
            }
        }

        SoftIconButton {
            enabled: root.vm.scan.ready
            help: L.tr("刷新")
            objectName: "bottomRefresh"
            size: Metrics.button
            symbol: "arrow.clockwise"

            onClicked: root.vm.refresh()
        }

        SecondaryButton {
            objectName: "stopClean"
            symbol: "xmark.circle"
            text: L.tr("停止")
            visible: root.vm.scan.cleaning && root.vm.scan.working

            onClicked: root.vm.stopCleaning()
        }

        SecondaryButton {
            enabled: root.vm.scan.itemCount > 0
            objectName: "previewButton"
            symbol: "eye"
            text: L.tr("预览项目")
            visible: !root.vm.scan.cleaning || !root.vm.scan.working

            onClicked: root.previewAsked()
        }

        PrimaryButton {
            enabled: root.vm.offer.canClean
            implicitWidth: Math.max(132, implicitContentWidth + 40)
            objectName: "cleanButton"
            symbol: root.vm.offer.previewsClean ? "trash" : "sparkles"
            text: root.vm.scan.cleaning ? root.vm.offer.cleanBusyTitle : root.vm.offer.cleanTitle

            onClicked: root.cleanAsked()
        }
    }

    ProgressLine {
        Accessible.name: root.vm.scan.title + " " + root.vm.scan.progressText
        Accessible.role: Accessible.ProgressBar
        Spoken.value: root.vm.scan.workProgress
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 1
        anchors.left: parent.left
        anchors.leftMargin: Metrics.panelRadius
        anchors.right: parent.right
        anchors.rightMargin: Metrics.panelRadius
        implicitHeight: 3
        value: root.vm.scan.workProgress
        visible: root.vm.scan.working
    }
}
