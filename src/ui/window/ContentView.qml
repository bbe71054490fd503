import QtQuick
import QtQuick.Layouts
import Vellmoor.Models
import Vellmoor.Theme

// The root view: the sidebar, the shown module's page, and the keys of the whole window.
// Object names that tests and tools may rely on:
//   sidebar.MODULE, languageSwitch            the sidebar (MODULE is the raw value, e.g. sidebar.systemJunk)
//   refreshButton, homeButton                 the top bar
//   scanButton, headerTitle, ringUnit         the header
//   rootNotice, rootNotice.text, rootNotice.close   the notice of a program that runs as root
//   limitation, openSettings                  the permission banner
//   filter.all, filter.recommended, filter.selected; kindFilter, ageFilter, selectFiltered, deselectFiltered
//   cleanupList, emptyState                   the list of the page (startupList on the login items page)
//   item.N, item.N.toggle, item.N.lock, item.N.expand, item.N.reveal, item.N.status       the Nth listed category
//   item.N.target.M, item.N.target.M.toggle, item.N.target.M.reveal                       its Mth path
//   startup.N, startup.N.action, startup.N.reveal, startup.N.status, startupFailure,
//   refreshStartup, loginItemsSettings
//   memoryApp.N, memoryApp.N.quit, memoryApp.N.monitor, refreshMemory, systemMonitor, pressure, memoryTotal
//   memoryPart.orange, memoryPart.mint, memoryPart.gray, cachesNote                       programs, file caches, free
//   selectedText, statusMessage, bottomRefresh, previewButton, cleanButton                the bottom bar
//   details.selectAll, details.deselectAll, details.close, details.done, details.summary, detailsList
//   confirm.accept, confirm.cancel, confirm.message                                       clean and memory
//   confirmQuit.accept, confirmQuit.cancel; confirmEnd.accept, confirmEnd.cancel, confirmEnd.message
//   confirmStartup.accept, confirmStartup.cancel
//   result.title, result.openTrash, result.rescan, result.done, result.failures, result.noFailures, result.caches
// Lists are virtual: only rows near the visible part exist. Rows of the sheet's list carry the same names as the
// page's; look for them below detailsList.
Item {
    id: root

    required property WindowModel vm

    anchors.fill: parent

    Shortcut {
        sequences: ["Ctrl+R", "F5"]

        onActivated: root.vm.refresh()
    }

    Shortcut {
        sequences: ["Ctrl+Q"]

        onActivated: Qt.quit()
    }

    RowLayout {
        anchors.fill: parent
        spacing: 0

        Sidebar {
            Layout.fillHeight: true
            Layout.preferredWidth: Metrics.sidebarWidth
            vm: root.vm
        }

        ColumnLayout {
            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.margins: Metrics.panelGap
            spacing: Metrics.panelGap

            TopBar {
                Layout.fillWidth: true
                Layout.preferredHeight: Math.max(Metrics.topBarHeight, implicitHeight)
                vm: root.vm
            }

            ModulePage {
                Layout.fillHeight: true
                Layout.fillWidth: true
                vm: root.vm

                onViewAll: sheets.showDetails()
            }

            BottomBar {
                Layout.fillWidth: true
                vm: root.vm

                onCleanAsked: sheets.askClean()
                onPreviewAsked: sheets.showDetails()
            }
        }
    }

    Sheets {
        id: sheets

        vm: root.vm
    }
}
