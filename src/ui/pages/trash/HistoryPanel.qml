// qmllint disable unqualified
import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Lists
import Vellmoor.Models
import Vellmoor.Theme

// Every clean of the last while, and the way back: Right unfolds one, Space ticks its items, Return shows where one lies.
GlassPanel {
    id: root

    required property WindowModel vm
    readonly property HistoryModel history: vm.history

    ColumnLayout {
        anchors.bottomMargin: 1
        anchors.fill: parent
        anchors.margins: 10
        spacing: Metrics.gap

        ListHeader {
            Layout.fillWidth: true
            Layout.leftMargin: 4
            counter: L.items(root.history.count)
            title: L.tr("历史记录")

            SecondaryButton {
                compact: true
                enabled: root.vm.scan.ready
                objectName: "forgetHistory"
                symbol: "xmark.circle"
                text: L.tr("清除历史记录")

                onClicked: root.vm.decision.askForget()
            }
        }

        BodyText {
            Layout.fillWidth: true
            color: Colors.ink(Colors.orange)
            elide: Text.ElideNone
            objectName: "historyProblem"
            spoken: true
            text: root.history.problem
            visible: text !== ""
            wrapMode: Text.Wrap
        }

        RowList {
            id: list

            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.rightMargin: -10
            objectName: "historyList"
            rows: root.history
            title: L.tr("历史记录")

            onFolded: row => {
                const head = root.history.headOf(row);
                go(head);
                root.history.setExpanded(head, false);
            }
            onSwitched: row => root.history.toggle(row)
            onUnfolded: row => root.history.setExpanded(row, true)

            delegate: HistoryRow {
                history: root.history
                vm: root.vm
                width: list.rowWidth
            }

            ScrollFade {
                anchors.left: parent.left
                anchors.right: parent.right
                anchors.rightMargin: 10
                parent: list
                view: list
                y: list.height - height
            }
        }
    }
}
