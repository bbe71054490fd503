import QtQuick
import QtQuick.Templates as T
import Vellmoor.Controls

// What every button does: it takes the keyboard only while it can be pressed, Return presses it as Space does, and so
// does a screen reader.
T.Button {
    id: root

    Accessible.focusable: enabled
    Accessible.name: text
    Accessible.onPressAction: {
        if (root.enabled)
            root.clicked();
    }
    // So that readers are told when it can be pressed, and when no longer.
    Spoken.expandable: false
    Keys.onEnterPressed: root.clicked()
    Keys.onReturnPressed: root.clicked()
    focusPolicy: enabled ? Qt.StrongFocus : Qt.NoFocus
}
