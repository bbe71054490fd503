// qmllint disable unqualified
import QtQuick
import QtQuick.Templates as T
import Vellmoor.Controls
import Vellmoor.Models

// A virtual list of categories and their paths; how a category is drawn is the page's. Up and Down move, Space ticks,
// Right and Left unfold and fold, Return shows the path in the file manager. The last 10 pixels of its width are the
// scroll bar's.
ListView {
    id: root

    required property CleanupListModel rows
    // The file that draws a category; it takes "row" and "rows".
    required property url category
    property string title

    Accessible.name: title
    Accessible.role: Accessible.List
    Keys.onLeftPressed: rows.setExpanded(currentIndex, false)
    Keys.onReturnPressed: rows.reveal(currentIndex)
    Keys.onRightPressed: rows.setExpanded(currentIndex, true)
    Keys.onSpacePressed: rows.toggle(currentIndex)
    activeFocusOnTab: count > 0 || activeFocus // Qt minds losing it under the keyboard
    bottomMargin: 11
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    focus: true
    model: rows
    reuseItems: true
    spacing: 6

    onActiveFocusChanged: {
        if (activeFocus && currentIndex < 0)
            currentIndex = 0;
    }

    T.ScrollBar.vertical: ScrollLine {
    }
    delegate: RowDelegate {
        category: root.category
        hasKeys: false
        rows: root.rows
        width: root.width - 10
    }
}
