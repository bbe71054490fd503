import QtQuick
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Pages
import Vellmoor.Theme

// The window's modal surfaces.
Item {
    id: root

    required property WindowModel vm

    function showDetails(): void {
        details.open();
    }

    function askClean(): void {
        clean.open();
    }

    function askQuit(row: int, name: string): void {
        quit.row = row;
        quit.name = name;
        quit.open();
    }

    function askStartup(row: int, name: string, enabled: bool): void {
        startup.row = row;
        startup.name = name;
        startup.disables = enabled;
        startup.open();
    }

    CleanupDetailSheet {
        id: details

        vm: root.vm
    }

    CleanupResultSheet {
        id: result

        vm: root.vm
    }

    ConfirmationDialog {
        id: clean

        acceptText: root.vm.cleanTitle
        cancelText: L.tr("取消")
        message: root.vm.confirmationMessage
        objectName: "confirm"
        symbol: root.vm.module === "memoryOptimization" ? "memorychip" : "trash"
        tint: root.vm.module === "memoryOptimization" ? Colors.mint : Colors.orange
        title: root.vm.confirmationTitle

        onAccepted: root.vm.cleanSelected()
    }

    ConfirmationDialog {
        id: quit

        property int row: -1
        property string name

        acceptText: L.tr("退出应用")
        cancelText: L.tr("取消")
        destructive: true
        message: L.tr("将请求应用正常退出以释放内存。请先确认应用中没有未保存内容。")
        objectName: "confirmQuit"
        symbol: "xmark.circle"
        tint: Colors.red
        title: L.tr1("退出 %@？", name)

        onAccepted: root.vm.quitMemoryApp(row)
    }

    ConfirmationDialog {
        id: startup

        property int row: -1
        property string name
        property bool disables: true

        acceptText: disables ? L.tr("禁用") : L.tr("恢复")
        cancelText: L.tr("取消")
        message: disables ? L.tr("禁用后会停止当前登录会话中的后台代理，并把配置移到 LaunchAgents.disabled。") : L.tr("恢复后会移回 LaunchAgents，并尝试重新加载该启动项。")
        objectName: "confirmStartup"
        symbol: disables ? "pause.circle" : "play.circle"
        tint: disables ? Colors.orange : Colors.green
        title: disables ? L.tr1("禁用 %@？", name) : L.tr1("恢复 %@？", name)

        onAccepted: root.vm.switchStartupItem(row)
    }
}
