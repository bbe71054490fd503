import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// The shown module's name, and what can be done on every page.
RowLayout {
    id: root

    required property WindowModel vm

    spacing: Metrics.gap

    ColumnLayout {
        spacing: 0

        Display {
            Layout.fillWidth: true
            objectName: "moduleTitle"
            text: root.vm.moduleTitle
        }

        BodyText {
            Layout.fillWidth: true
            color: Colors.vmSecondaryText
            spoken: true
            text: root.vm.moduleSubtitle
        }
    }

    SoftIconButton {
        enabled: root.vm.canScan && !root.vm.scan.scanning
        help: L.tr("刷新扫描结果")
        objectName: "refreshButton"
        symbol: "arrow.clockwise"

        onClicked: root.vm.refresh()
    }

    SoftIconButton {
        help: L.tr("打开用户目录")
        objectName: "homeButton"
        symbol: "folder"

        onClicked: root.vm.openHome()
    }
}
