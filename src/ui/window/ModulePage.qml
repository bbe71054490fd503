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

    signal changeAsked(int row, string name, bool enabled)
    signal quitAsked(int row, string name)
    signal viewAll

    spacing: Metrics.panelGap

    DashboardHeader {
        Layout.fillWidth: true
        visible: root.vm.module === "smartScan"
        vm: root.vm
    }

    ModuleHeader {
        Layout.fillWidth: true
        visible: root.vm.module !== "smartScan"
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

        Loader {
            Layout.fillHeight: true
            Layout.fillWidth: true
            sourceComponent: {
                const pages = {
                    "largeFiles": largeFiles,
                    "appUninstaller": apps,
                    "performance": startup,
                    "memoryOptimization": memory
                };
                return pages[root.vm.module] ?? cleanup;
            }
        }

        SecondaryColumn {
            Layout.fillHeight: true
            Layout.preferredWidth: Metrics.secondaryWidth
            vm: root.vm

            onViewAll: root.viewAll()
        }
    }

    Component {
        id: cleanup

        CleanupPage {
            vm: root.vm
        }
    }

    Component {
        id: largeFiles

        LargeFilesPage {
            vm: root.vm
        }
    }

    Component {
        id: apps

        AppsPage {
            vm: root.vm
        }
    }

    Component {
        id: startup

        StartupPage {
            vm: root.vm

            onChangeAsked: (row, name, enabled) => root.changeAsked(row, name, enabled)
        }
    }

    Component {
        id: memory

        MemoryPage {
            vm: root.vm

            onQuitAsked: (row, name) => root.quitAsked(row, name)
        }
    }
}
