// qmllint disable unqualified
import QtQuick
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// In which order a list stands.
SoftIconButton {
    id: root

    required property CleanupListModel rows
    readonly property var choices: [{
            "value": "given",
            "title": L.tr("默认")
        }, {
            "value": "size",
            "title": L.tr("大小")
        }, {
            "value": "name",
            "title": L.tr("名称")
        }, {
            "value": "date",
            "title": L.tr("日期")
        }]
    readonly property string current: choices.find(choice => choice.value === rows.order)?.title ?? ""

    flat: true
    help: L.tr1("排序：%@", current)
    ink: rows.order === "given" ? Colors.vmSecondaryText : Colors.cyan
    objectName: "sortButton"
    size: Metrics.rowButton
    symbol: "arrow.up.arrow.down"

    onClicked: menu.popup(root, root.width - menu.width, root.height)

    component SortItem: ContextMenuItem {
        required property int choice
        readonly property string value: root.choices[choice].value

        Spoken.tick: value === root.rows.order ? Qt.Checked : Qt.Unchecked
        font.bold: value === root.rows.order
        implicitWidth: Metrics.grown(112)
        objectName: "sort." + value
        text: root.choices[choice].title

        onTriggered: root.rows.order = value
    }

    ContextMenu {
        id: menu

        implicitWidth: Metrics.grown(120)
        title: root.help

        SortItem {
            choice: 0
        }

        SortItem {
            choice: 1
        }

        SortItem {
            choice: 2
        }

        SortItem {
            choice: 3
        }
    }
}
