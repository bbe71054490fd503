// qmllint disable unqualified
import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// The keys of the window and of its lists.
Sheet {
    id: root

    required property WindowModel vm
    readonly property var keys: [[L.tr("切换到第 1 至 8 个模块"), "Ctrl+1 … Ctrl+8"], [L.tr("扫描当前模块"), "F5, Ctrl+R"], [L.tr("在列表中搜索"), "Ctrl+F"], [L.tr("在列表中移动"), "↑ ↓ PgUp PgDn Home End A–Z"], [L.tr("勾选或取消勾选"), "Space"], [L.tr("全选列表"), "Ctrl+A"], [L.tr("展开或折叠"), "→ ←"], [L.tr("在 Finder 中显示"), "Enter"], [L.tr("打开行菜单"), "Menu, Shift+F10"], [L.tr("键盘快捷键"), "F1"], [L.tr("关闭窗口"), "Ctrl+W"], [L.tr("退出"), "Ctrl+Q"]]

    objectName: "shortcuts"
    title: L.tr("键盘快捷键")
    wantedHeight: Metrics.grown(480)
    wantedWidth: Metrics.grown(520)

    onOpened: done.forceActiveFocus(Qt.TabFocusReason)

    contentItem: ColumnLayout {
        spacing: Metrics.wideGap

        Heading {
            Layout.fillWidth: true
            text: root.title
        }

        ScrollColumn {
            Layout.fillHeight: true
            Layout.fillWidth: true
            ground: Colors.sheet
            spacing: Metrics.gap

            Repeater {
                model: root.keys

                FigureRow {
                    required property var modelData

                    Layout.fillWidth: true
                    title: modelData[0]
                    value: modelData[1]
                }
            }
        }

        PrimaryButton {
            id: done

            Layout.alignment: Qt.AlignRight
            objectName: "shortcuts.done"
            text: L.tr("完成")

            onClicked: root.close()
        }
    }
}
