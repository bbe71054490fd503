import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// The shown module's name, and what can be done on every page.
RowLayout {
    id: root

    required property WindowModel vm
    // The second column has no place of its own.
    property bool hasOverview: false

    signal overviewAsked

    spacing: Metrics.gap

    Display {
        Layout.maximumWidth: implicitWidth + 1
        Layout.minimumWidth: 60
        Layout.fillWidth: true
        objectName: "moduleTitle"
        text: root.vm.moduleTitle
    }

    BodyText {
        Layout.alignment: Qt.AlignBottom
        Layout.bottomMargin: 5
        Layout.fillWidth: true
        Layout.leftMargin: 4
        Layout.preferredWidth: 1 // what the title leaves
        color: Colors.vmSecondaryText
        spoken: true
        text: root.vm.moduleSubtitle
    }

    SoftIconButton {
        help: L.tr("显示概览")
        objectName: "overviewButton"
        symbol: "sidebar.right"
        visible: root.hasOverview

        onClicked: root.overviewAsked()
    }

    SoftIconButton {
        enabled: root.vm.scan.ready
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
