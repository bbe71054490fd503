// qmllint disable unqualified
import QtQuick
import QtQuick.Templates as T
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// A virtual list that keeps the keyboard's place. The arrows, Page Up and Down, Home and End move, letters go to a name,
// Return shows the row's path in the file manager, Control and C copies it; what the other keys do is the list's. The
// last 10 pixels of its width are the scroll bar's, the first where the window is mirrored.
ListView {
    id: root

    required property KeyedListModel rows
    property string title
    property string typed
    // Of its rows, beside the bar.
    readonly property real rowWidth: width - 10

    // Space on a row, Control and A, Left and Right.
    signal switched(int row)
    signal allWanted
    signal folded(int row)
    signal unfolded(int row)

    // A page is what is in sight but for one row.
    function page(by: int): void {
        const rowHeight = currentItem ? currentItem.height + spacing : 60;
        go(currentIndex + by * Math.max(1, Math.floor(height / rowHeight) - 1));
    }

    function go(row: int): void {
        currentIndex = Math.max(0, Math.min(count - 1, row));
        positionViewAtIndex(currentIndex, ListView.Contain);
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
            [Qt.Key_Left]: () => folded(currentIndex),
            [Qt.Key_Right]: () => unfolded(currentIndex),
            [Qt.Key_Space]: () => typed === "" ? switched(currentIndex) : type(" "),
            [Qt.Key_Return]: () => rows.reveal(currentIndex),
            [Qt.Key_Enter]: () => rows.reveal(currentIndex)
        };
        const plain = (event.modifiers & ~(Qt.KeypadModifier | Qt.ShiftModifier)) === 0;
        if (event.key === Qt.Key_A && event.modifiers === Qt.ControlModifier)
            allWanted();
        else if (event.key === Qt.Key_C && event.modifiers === Qt.ControlModifier)
            rows.copyPath(currentIndex);
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
    // A list itself decides on a row's place when it changes sides, since Qt 6.8.
    contentItem.transform: Translate {
        x: root.LayoutMirroring.enabled ? root.width - root.rowWidth : 0
    }
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

    // Rows below move over it.
    remove: Transition {
        enabled: !Motion.reduced

        PropertyAction {
            property: "z"
            value: -1
        }

        NumberAnimation {
            duration: Motion.quick
            property: "opacity"
            to: 0
        }
    }

    Timer {
        id: typing

        interval: 1000

        onTriggered: root.typed = ""
    }
}
