import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// Before a clean, or before memory is released. Red when anything goes for good.
ConfirmationDialog {
    required property WindowModel vm

    acceptText: vm.cleanTitle
    cancelText: L.tr("取消")
    destructive: vm.removesForGood
    message: vm.confirmationMessage
    objectName: "confirm"
    parts: vm.confirmationParts
    symbol: vm.previewsClean ? "trash" : "memorychip"
    tint: !vm.previewsClean ? Colors.mint : vm.removesForGood ? Colors.red : Colors.orange
    title: vm.confirmationTitle

    onAccepted: vm.cleanSelected()
}
