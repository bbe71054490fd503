// qmllint disable unqualified
import QtQuick
import QtQuick.Layouts
import Vellmoor.Models
import Vellmoor.Pages
import Vellmoor.Theme

// The shown module: its header over its list and the narrow column.
ColumnLayout {
    id: root

    required property WindowModel vm

    signal viewAll

    readonly property var pageFiles: ({
            "largeFiles": "large_files/LargeFilesPage.qml",
            "appUninstaller": "applications/AppsPage.qml",
            "performance": "login_items/StartupPage.qml",
            "memoryOptimization": "memory/MemoryPage.qml"
        })

    spacing: Metrics.panelGap

    ViewLoader {
        Layout.fillWidth: true
        file: root.vm.module === "smartScan" ? "dashboard/DashboardHeader.qml" : "dashboard/ModuleHeader.qml"
        vm: root.vm
    }

    RootNotice {
        Layout.fillWidth: true
        visible: root.vm.rootNotice

        onClosed: root.vm.closeRootNotice()
    }

    PermissionInlineWarning {
        Layout.fillWidth: true
        limitations: root.vm.limitation
        visible: root.vm.limitation !== ""

        onOpenSettings: root.vm.openPermissionSettings()
    }

    RowLayout {
        Layout.fillHeight: true
        Layout.fillWidth: true
        spacing: Metrics.panelGap

        ViewLoader {
            Layout.fillHeight: true
            Layout.fillWidth: true
            file: root.pageFiles[root.vm.module] ?? "cleanup/CleanupPage.qml"
            vm: root.vm
        }

        SecondaryColumn {
            Layout.fillHeight: true
            Layout.preferredWidth: Metrics.secondaryWidth
            vm: root.vm

            onViewAll: root.viewAll()
        }
    }
}
