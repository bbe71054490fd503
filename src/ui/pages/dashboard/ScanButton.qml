import QtQuick
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// Starts a scan of the shown module, or cancels the running one.
PrimaryButton {
    required property WindowModel vm
    property string startText: L.tr("开始扫描")
    property string startSymbol: "play.fill"

    enabled: vm.canScan
    implicitWidth: Math.max(Metrics.grown(150), implicitContentWidth + 40)
    objectName: "scanButton"
    symbol: vm.scan.scanning ? "xmark.circle" : startSymbol
    text: vm.scan.scanning ? L.tr("取消扫描") : startText

    onClicked: vm.scanOrCancel()
}
