import QtQuick
import Vellmoor.Controls
import Vellmoor.Models

// Asks before an application or a login item is touched; the answer goes to the question of that number.
ConfirmationDialog {
    required property WindowModel vm
    required property int number
    required property string name

    cancelText: L.tr("取消")

    onAccepted: vm.question.accept(number)
    onClosed: vm.question.drop(number)
}
