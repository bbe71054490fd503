import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// Before an application is asked to quit.
ConfirmationDialog {
    required property WindowModel vm
    required property int row
    required property string name

    acceptText: L.tr("退出应用")
    cancelText: L.tr("取消")
    destructive: true
    message: L.tr("将请求应用正常退出以释放内存。请先确认应用中没有未保存内容。")
    objectName: "confirmQuit"
    symbol: "xmark.circle"
    tint: Colors.red
    title: L.tr1("退出 %@？", name)

    onAccepted: vm.quitMemoryApp(row)
}
