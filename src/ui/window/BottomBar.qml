import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// What is selected, what is going on, and the module's main action.
GlassPanel {
    id: root

    required property WindowModel vm

    signal cleanAsked
    signal previewAsked

    implicitHeight: Metrics.bottomBarHeight

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 18
        anchors.rightMargin: 12
        spacing: 10

        ColumnLayout {
            spacing: 0

            Subheading {
                Accessible.role: Accessible.StaticText
                Layout.fillWidth: true
                objectName: "selectedText"
                text: root.vm.selectedText
            }

            Caption {
                Layout.fillWidth: true
                maximumLineCount: 2
                objectName: "statusMessage"
                spoken: true
                text: root.vm.scan.status
                wrapMode: Text.Wrap
            }
        }

        SoftIconButton {
            enabled: root.vm.canScan && !root.vm.scan.scanning
            help: L.tr("刷新")
            objectName: "bottomRefresh"
            size: Metrics.button
            symbol: "arrow.clockwise"

            onClicked: root.vm.refresh()
        }

        SecondaryButton {
            enabled: root.vm.scan.itemCount > 0
            objectName: "previewButton"
            symbol: "eye"
            text: L.tr("预览项目")

            onClicked: root.previewAsked()
        }

        PrimaryButton {
            enabled: root.vm.canClean
            implicitWidth: 132
            objectName: "cleanButton"
            symbol: root.vm.module === "memoryOptimization" ? "sparkles" : "trash"
            text: root.vm.scan.cleaning ? root.vm.cleanBusyTitle : root.vm.cleanTitle

            onClicked: root.cleanAsked()
        }
    }

    ProgressLine {
        Accessible.name: root.vm.scan.title + " " + Math.round(value * 100) + "%"
        Accessible.role: Accessible.ProgressBar
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 1
        anchors.left: parent.left
        anchors.leftMargin: Metrics.panelRadius
        anchors.right: parent.right
        anchors.rightMargin: Metrics.panelRadius
        implicitHeight: 3
        value: root.vm.scan.progress
        visible: root.vm.scan.scanning
    }
}
