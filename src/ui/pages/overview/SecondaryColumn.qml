import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Pages
import Vellmoor.Theme

// The narrow column: the disk, the module's figures, health and permissions.
ScrollColumn {
    id: root

    required property WindowModel vm

    readonly property bool showsFiles: vm.candidates.count > 0 && (vm.module === "smartScan" || vm.module === "largeFiles")

    ground: Colors.groundLower
    spacing: Metrics.tightGap

    signal viewAll

    StoragePanel {
        Layout.fillWidth: true
        vm: root.vm
    }

    ViewLoader {
        Layout.fillWidth: true
        file: root.vm.module === "performance" ? "login_items/StartupSummaryPanel.qml" : "overview/SummaryPanel.qml"
        vm: root.vm
    }

    ViewLoader {
        id: preview

        Layout.fillWidth: true
        file: root.showsFiles ? "overview/FilePreviewPanel.qml" : ""
        visible: root.showsFiles
        vm: root.vm
    }

    Connections {
        function onViewAll(): void {
            root.viewAll();
        }

        ignoreUnknownSignals: true
        target: preview.item
    }

    HealthPanel {
        Layout.fillWidth: true
        vm: root.vm
    }

    PermissionPanel {
        Layout.fillWidth: true
        vm: root.vm
    }
}
