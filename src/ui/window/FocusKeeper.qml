import QtQuick

// What has the keyboard may go out of sight or rest: a list that is empty now, the button of a clean that runs. The
// keyboard then goes on to what stands before it; Qt would leave it with the window, where no key does anything.
Item {
    id: root

    readonly property Item keyboard: Window.activeFocusItem
    readonly property bool lost: keyboard !== null && Window.active && (keyboard === Window.contentItem || !keyboard.visible)
    property Item last: null

    onKeyboardChanged: {
        if (keyboard !== null && keyboard !== Window.contentItem)
            last = keyboard;
    }
    onLostChanged: {
        if (lost)
            rescue.restart();
    }

    // A sheet that closes gives the keyboard back by itself.
    Timer {
        id: rescue

        interval: 0

        onTriggered: {
            if (!root.lost)
                return;
            for (const next of [root.last, root.last?.nextItemInFocusChain(false), root.nextItemInFocusChain()]) {
                if (next && next.visible && next.enabled) {
                    next.forceActiveFocus(Qt.TabFocusReason);
                    return;
                }
            }
        }
    }
}
