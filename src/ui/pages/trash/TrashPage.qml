import QtQuick
import QtQuick.Layouts
import Vellmoor.Models
import Vellmoor.Pages
import Vellmoor.Theme

// What lies in the Trash, and below it what went there and how it comes back.
ColumnLayout {
    id: root

    required property WindowModel vm
    readonly property bool hasHistory: vm.history.count > 0 || vm.history.problem !== ""

    // Room for both; a low window scrolls.
    readonly property real leastHeight: Metrics.leastList * (hasHistory ? 1.8 : 1)

    spacing: Metrics.tightGap

    CleanupPage {
        id: rows

        Layout.fillHeight: true
        Layout.fillWidth: true
        // The rest is the history's.
        Layout.maximumHeight: root.hasHistory ? Math.max(Metrics.grown(150), wholeHeight) : 100000
        Layout.preferredHeight: 1
        vm: root.vm
    }

    HistoryPanel {
        Layout.fillHeight: true
        Layout.fillWidth: true
        Layout.preferredHeight: 1
        visible: root.hasHistory
        vm: root.vm
    }
}
