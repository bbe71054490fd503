// qmllint disable unqualified
import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Pages
import Vellmoor.Theme

// The shown module: its header over its list and the narrow column. Where the window is too low for that it scrolls.
Flickable {
    id: root

    required property WindowModel vm
    required property bool hasColumns
    // Beside the panels, for their shadows: what scrolls is cut.
    readonly property real shade: Metrics.panelGap / 2
    // Results get the room; so does everything in a low window.
    readonly property bool compact: vm.scan.scanned || height / Metrics.growth < 480

    signal viewAll

    readonly property var pageFiles: ({
            "largeFiles": "large_files/LargeFilesPage.qml",
            "appUninstaller": "applications/AppsPage.qml",
            "performance": "login_items/StartupPage.qml",
            "memoryOptimization": "memory/MemoryPage.qml",
            "trash": "trash/TrashPage.qml"
        })

    boundsBehavior: Flickable.StopAtBounds
    clip: interactive
    contentHeight: Math.max(height, content.implicitHeight)
    contentWidth: width
    interactive: contentHeight > height + 1

    ColumnLayout {
        id: content

        height: root.contentHeight
        spacing: Metrics.tightGap
        width: root.width - 2 * root.shade
        x: root.shade

        ViewLoader {
            id: header

            Layout.fillWidth: true
            file: root.vm.module === "smartScan" ? "dashboard/DashboardHeader.qml" : "dashboard/ModuleHeader.qml"
            vm: root.vm
        }

        Binding {
            property: "compact"
            target: header.item
            value: root.compact
            when: header.item !== null
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

        Item {
            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.preferredHeight: page.item?.leastHeight ?? Metrics.leastList

            ViewLoader {
                id: page

                anchors.fill: parent
                anchors.rightMargin: root.hasColumns ? Metrics.secondaryWidth + Metrics.panelGap : 0
                file: root.pageFiles[root.vm.module] ?? "cleanup/CleanupPage.qml"
                vm: root.vm
            }

            Loader {
                active: root.hasColumns
                anchors.bottom: parent.bottom
                anchors.right: parent.right
                anchors.top: parent.top
                width: Metrics.secondaryWidth

                sourceComponent: SecondaryColumn {
                    vm: root.vm

                    onViewAll: root.viewAll()
                }
            }
        }
    }

    FocusFollower {
        view: root
    }

    ScrollFade {
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.leftMargin: root.shade
        anchors.right: parent.right
        anchors.rightMargin: root.shade
        ground: Colors.groundLower
        parent: root
        view: root
        visible: root.interactive && !root.atYEnd
        z: 1
    }
}
