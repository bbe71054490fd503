import QtQuick
import Vellmoor.Models
import Vellmoor.Theme

// Before an item that starts at login is disabled or restored.
QuestionDialog {
    // Decided when it opens: the question is gone before the dialog is.
    property bool disables: true

    acceptText: disables ? L.tr("禁用") : L.tr("恢复")
    message: disables ? L.tr("禁用后会停止当前登录会话中的后台代理，并把配置移到 LaunchAgents.disabled。") : L.tr("恢复后会移回 LaunchAgents，并尝试重新加载该启动项。")
    objectName: "confirmStartup"
    symbol: disables ? "pause.circle" : "play.circle"
    tint: disables ? Colors.orange : Colors.green
    title: disables ? L.tr1("禁用 %@？", name) : L.tr1("恢复 %@？", name)

    Component.onCompleted: disables = vm.question.kind === "disable"
}
