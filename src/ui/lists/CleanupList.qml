// qmllint disable unqualified
import QtQuick
import Vellmoor.Lists
import Vellmoor.Models

// A list of categories and their paths; how a category is drawn is the page's. Space ticks, Right and Left unfold and
// fold.
RowList {
    id: root

    readonly property CleanupListModel categories: rows as CleanupListModel
    // The file that draws a category; it takes "row" and "rows".
    required property url category

    onAllWanted: categories.setAllSelected(true)
    onFolded: row => {
        const head = categories.headOf(row);
        go(head);
        categories.setExpanded(head, false);
    }
    onSwitched: row => categories.toggle(row)
    onUnfolded: row => categories.setExpanded(row, true)

    delegate: RowDelegate {
        category: root.category
        hasKeys: false
        rows: root.categories
        width: root.rowWidth
    }
}
