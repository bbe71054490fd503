import QtQuick
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// Before something of the history is ended for good. Its words are those of the moment when it opened.
ConfirmationDialog {
    id: root

    required property WindowModel vm

    cancelText: L.tr("取消")
    objectName: "decide"

    Component.onCompleted: {
        const decision = vm.decision;
        acceptText = decision.action;
        destructive = decision.kind !== "finish";
        message = decision.message;
        symbol = decision.kind === "finish" ? "trash" : "exclamationmark.triangle.fill";
        tint = decision.kind === "finish" ? Colors.orange : Colors.red;
        title = decision.title;
    }
    onAccepted: vm.decision.accept()
    onClosed: vm.decision.drop()
}
