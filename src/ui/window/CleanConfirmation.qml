import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// Before a clean, or before memory is released.
ConfirmationDialog {
    required property WindowModel vm
    readonly property bool memory: vm.module === "memoryOptimization"

    acceptText: vm.cleanTitle
    cancelText: L.tr("取消")
    message: vm.confirmationMessage
    objectName: "confirm"
    symbol: memory ? "memorychip" : "trash"
    tint: memory ? Colors.mint : Colors.orange
    title: vm.confirmationTitle

    onAccepted: vm.cleanSelected()
}
