import QtQuick

// What has the keyboard may go out of sight: a list that is empty now, a panel with nothing to say. The keyboard then goes
// on to what stands before it.
Item {
    id: root

    readonly property Item keyboard: Window.activeFocusItem
    readonly property bool lost: keyboard !== null && !keyboard.visible

    onLostChanged: {
        if (lost)
            rescue.restart();
    }

    // A sheet that closes gives the keyboard back by itself.
    Timer {
        id: rescue

        interval: 0

        onTriggered: {
            const next = root.lost ? root.keyboard.nextItemInFocusChain(false) : null;
            if (next && next.visible)
                next.forceActiveFocus(Qt.TabFocusReason);
        }
    }
}
