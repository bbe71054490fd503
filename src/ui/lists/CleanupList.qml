// qmllint disable unqualified
import QtQuick
import QtQuick.Templates as T
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// A virtual list of categories and their paths; how a category is drawn is the page's. The arrows, Page Up and Down,
// Home and End move, letters go to a name, Space ticks, Right and Left unfold and fold, Return shows the path in the
// file manager, the menu key opens the row's menu. The last 10 pixels of its width are the scroll bar's.
ListView {
    id: root

    required property CleanupListModel rows
    // The file that draws a category; it takes "row" and "rows".
    required property url category
    property string title
    property string typed

    // A page is what is in sight but for one row.
    function page(by: int): void {
        const rowHeight = currentItem ? currentItem.height + spacing : 60;
        go(currentIndex + by * Math.max(1, Math.floor(height / rowHeight) - 1));
    }

    function go(row: int): void {
        currentIndex = Math.max(0, Math.min(count - 1, row));
        positionViewAtIndex(currentIndex, ListView.Contain);
    }

    function fold(): void {
        const head = rows.headOf(currentIndex);
        go(head);
        rows.setExpanded(head, false);
    }

    function type(letters: string): void {
        typed += letters;
        typing.restart();
        // A longer word may still be the row where the keyboard is.
        const found = rows.rowStartingWith(typed, typed.length > 1 ? currentIndex - 1 : currentIndex);
        if (found >= 0)
            go(found);
    }

    function press(event: var): void {
        const keys = {
            [Qt.Key_PageDown]: () => page(1),
            [Qt.Key_PageUp]: () => page(-1),
            [Qt.Key_Home]: () => go(0),
            [Qt.Key_End]: () => go(count - 1),
            [Qt.Key_Left]: () => fold(),
            [Qt.Key_Right]: () => rows.setExpanded(currentIndex, true),
            [Qt.Key_Space]: () => typed === "" ? rows.toggle(currentIndex) : type(" "),
            [Qt.Key_Return]: () => rows.reveal(currentIndex),
            [Qt.Key_Enter]: () => rows.reveal(currentIndex),
            [Qt.Key_Menu]: () => (currentItem as RowDelegate)?.openMenu()
        };
        const plain = (event.modifiers & ~(Qt.KeypadModifier | Qt.ShiftModifier)) === 0;
        if (event.key === Qt.Key_A && event.modifiers === Qt.ControlModifier)
            rows.setAllSelected(true);
        else if (event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier)
            keys[Qt.Key_Menu]();
        else if (plain && keys[event.key])
            keys[event.key]();
        else if (plain && /^[^\x00-\x20\x7f]/.test(event.text))
            type(event.text);
        else
            return;
        event.accepted = true;
    }

    Accessible.name: title
    Accessible.role: Accessible.List
    Keys.onPressed: event => root.press(event)
    activeFocusOnTab: count > 0 || activeFocus // Qt minds losing it under the keyboard
    bottomMargin: 11
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    focus: true
    highlightMoveDuration: Motion.quick
    model: rows
    reuseItems: true
    spacing: 4
    topMargin: 2

    onActiveFocusChanged: {
        if (activeFocus && currentIndex < 0)
            currentIndex = 0;
    }

    T.ScrollBar.vertical: ScrollLine {
    }
    add: Transition {
        enabled: !Motion.reduced

        NumberAnimation {
            duration: Motion.calm
            from: 0
            property: "opacity"
            to: 1
        }
    }
    delegate: RowDelegate {
        category: root.category
        hasKeys: false
        rows: root.rows
        width: root.width - 10
    }
    displaced: Transition {
        enabled: !Motion.reduced

        NumberAnimation {
            duration: Motion.calm
            easing.type: Easing.OutCubic
            property: "y"
        }

        // A row that had just begun to come.
        NumberAnimation {
            duration: Motion.quick
            property: "opacity"
            to: 1
        }
    }

    Timer {
        id: typing

        interval: 1000

        onTriggered: root.typed = ""
    }
}
