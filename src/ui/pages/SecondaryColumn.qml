import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// The narrow column: the disk, the module's figures, health and permissions.
ScrollColumn {
    id: root

    required property WindowModel vm

    ground: Colors.groundLower

    signal viewAll

    StoragePanel {
        Layout.fillWidth: true
        vm: root.vm
    }

    StartupSummaryPanel {
        Layout.fillWidth: true
        visible: root.vm.module === "performance"
        vm: root.vm
    }

    SummaryPanel {
        Layout.fillWidth: true
        visible: root.vm.module !== "performance"
        vm: root.vm
    }

    FilePreviewPanel {
        Layout.fillWidth: true
        visible: root.vm.candidates.count > 0 && (root.vm.module === "smartScan" || root.vm.module === "largeFiles")
        vm: root.vm

        onViewAll: root.viewAll()
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
