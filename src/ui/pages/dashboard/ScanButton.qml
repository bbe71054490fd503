import QtQuick
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// Starts a scan of the shown module, or cancels the running one.
PrimaryButton {
    id: root

    required property WindowModel vm
    readonly property string cancelText: L.tr("取消扫描")
    // As wide for either text: nothing beside it moves when a scan begins.
    readonly property real further: Math.max(start.width, cancel.width) - (vm.scan.scanning ? cancel : start).width
    property string startText: L.tr("开始扫描")
    property string startSymbol: "play.fill"

    enabled: vm.canScan
    implicitWidth: Math.max(Metrics.grown(150), implicitContentWidth + 40 + Math.ceil(further))
    objectName: "scanButton"
    symbol: vm.scan.scanning ? "xmark.circle" : startSymbol
    text: vm.scan.scanning ? cancelText : startText

    onClicked: vm.scanOrCancel()

    TextMetrics {
        id: start

        font: root.font
        text: root.startText
    }

    TextMetrics {
        id: cancel

        font: root.font
        text: root.cancelText
    }
}
