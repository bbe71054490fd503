import QtQuick
import QtQuick.Layouts
import Vellmoor.Models
import Vellmoor.Theme

// The root view: the sidebar, the shown module's page, and the keys of the whole window.
// Object names that tests and tools may rely on:
//   sidebar.MODULE, languageSwitch, themeSwitch, aboutButton   the sidebar (MODULE: the raw value, e.g. systemJunk)
//   refreshButton, homeButton, overviewButton the top bar; the last in windows without a second column
//   notice, notice.close, announcer.N         the outcome of an action; what is only told to screen readers
//   scanButton, headerTitle, ringUnit         the header
//   rootNotice, rootNotice.text, rootNotice.close   the notice of a program that runs as root
//   limitation, openSettings                  the permission banner
//   searchButton, searchField, clearSearch, sortButton, sort.ORDER, showAll                the list's header
//   filter.all, filter.recommended, filter.selected; kindFilter, ageFilter, selectFiltered, deselectFiltered
//   cleanupList, emptyState                   the list of the page (startupList on the login items page)
//   item.N, item.N.toggle, item.N.lock, item.N.expand, item.N.reveal, item.N.status       the Nth listed category
//   item.N.target.M, item.N.target.M.toggle, item.N.target.M.reveal                       its Mth path
//   startup.N, startup.N.action, startup.N.reveal, startup.N.status, startupFailure,
//   refreshStartup, loginItemsSettings
//   memoryApp.N, memoryApp.N.quit, memoryApp.N.monitor, refreshMemory, systemMonitor, pressure, memoryTotal
//   memoryPart.orange, memoryPart.mint, memoryPart.gray, cachesNote                       programs, file caches, free
//   selectedText, hiddenSelection, statusMessage, bottomRefresh, previewButton, cleanButton                the bottom bar
//   details.selectAll, details.deselectAll, details.close, details.done, details.clean, details.summary, detailsList
//   confirm.accept, confirm.cancel, confirm.message, confirm.part                                  clean and memory
//   confirmQuit.accept, confirmQuit.cancel; confirmEnd.accept, confirmEnd.cancel, confirmEnd.message
//   confirmStartup.accept, confirmStartup.cancel
//   shortcuts, about, overview                                                            further sheets
//   history.N, history.N.item.M, history.switch.N with .putBack, .finish, .expand, .toggle, .condition, .menu.putBack
//   historyList, forgetHistory, historyProblem; decide.accept, decide.cancel, decide.message
//   kept.N, kept.N.reveal, kept.N.offer, keptList, kept.done, keptButton
//   restore.list, restore.showBoth.N, restore.done; closing.finish, closing.stop, closing.back; stopClean
//   result.trashed, result.removed, result.freedNow, result.putBack, result.forGood, result.copyFailures
//   result.title, result.openTrash, result.rescan, result.done, result.failures, result.noFailures, result.caches
// Lists are virtual: only rows near the visible part exist. Rows of the sheet's list carry the same names as the
// page's; look for them below detailsList.
Item {
    id: root

    required property WindowModel vm
    // What the window would measure with text of the usual size.
    readonly property real room: width / Metrics.growth
    readonly property bool narrow: room < Metrics.wideFrom
    readonly property bool hasColumns: room >= Metrics.columnsFrom

    anchors.fill: parent

    // Sheets and menus are beside this item, below its parent.
    Binding {
        property: "enabled"
        target: root.parent ? root.parent.LayoutMirroring : null
        value: Qt.application.layoutDirection === Qt.RightToLeft // qmllint disable
    }

    Binding {
        property: "childrenInherit"
        target: root.parent ? root.parent.LayoutMirroring : null
        value: true
    }

    Keymap {
        vm: root.vm

        onAboutAsked: sheets.showAbout()
        onShortcutsAsked: sheets.showShortcuts()
    }

    FocusKeeper {
    }

    RowLayout {
        anchors.fill: parent
        spacing: 0

        Sidebar {
            id: sidebar

            Layout.fillHeight: true
            Layout.preferredWidth: root.narrow ? Metrics.narrowSidebarWidth : Metrics.sidebarWidth
            narrow: root.narrow
            vm: root.vm

            onAboutAsked: sheets.showAbout()
            onKeptAsked: sheets.showKept()
        }

        ColumnLayout {
            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.margins: Metrics.windowMargin
            Layout.topMargin: 10
            spacing: Metrics.tightGap

            TopBar {
                Layout.fillWidth: true
                Layout.preferredHeight: Math.max(Metrics.topBarHeight, implicitHeight)
                hasOverview: !root.hasColumns
                vm: root.vm

                onOverviewAsked: sheets.showOverview()
            }

            ModulePage {
                Layout.fillHeight: true
                Layout.fillWidth: true
                Layout.leftMargin: -shade
                Layout.rightMargin: -shade
                hasColumns: root.hasColumns
                vm: root.vm

                onViewAll: sheets.showDetails(false)
            }

            BottomBar {
                Layout.fillWidth: true
                vm: root.vm

                onCleanAsked: sheets.startClean()
                onPreviewAsked: sheets.showDetails(false)
            }
        }
    }

    NoticeBar {
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Metrics.bottomBarHeight + 2 * Metrics.windowMargin
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.horizontalCenterOffset: sidebar.width / 2 // mirrored with the layout
        maximumWidth: root.width - sidebar.width - 48
        vm: root.vm
    }

    Announcer {
        source: root.vm
    }

    Sheets {
        id: sheets

        vm: root.vm
    }
}
