import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// Before a clean, or before memory is released. Red when anything goes for good.
ConfirmationDialog {
    required property WindowModel vm

    acceptText: vm.offer.cleanTitle
    cancelText: L.tr("取消")
    destructive: vm.offer.removesForGood
    message: vm.offer.confirmationMessage
    objectName: "confirm"
    parts: vm.offer.confirmationParts
    symbol: vm.offer.previewsClean ? "trash" : "memorychip"
    tint: !vm.offer.previewsClean ? Colors.mint : vm.offer.removesForGood ? Colors.red : Colors.orange
    title: vm.offer.confirmationTitle

    onAccepted: vm.cleanSelected()
}
