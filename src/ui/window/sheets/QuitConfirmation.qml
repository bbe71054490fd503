import Vellmoor.Models
import Vellmoor.Theme

// Before an application is asked to quit.
QuestionDialog {
    acceptText: L.tr("退出应用")
    destructive: true
    message: L.tr("将请求应用正常退出以释放内存。请先确认应用中没有未保存内容。")
    objectName: "confirmQuit"
    symbol: "xmark.circle"
    tint: Colors.red
    title: L.tr1("退出 %@？", name)
}
