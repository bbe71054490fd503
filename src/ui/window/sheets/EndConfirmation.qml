import Vellmoor.Models
import Vellmoor.Theme

// Before an application that cannot be asked is ended.
QuestionDialog {
    acceptText: L.tr("结束")
    destructive: true
    message: L.tr1("%@ 只能被结束，未保存的内容会丢失。", name)
    objectName: "confirmEnd"
    symbol: "exclamationmark.triangle.fill"
    tint: Colors.red
    title: L.tr1("结束 %@？", name)
}
