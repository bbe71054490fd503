import QtQuick
import QtQuick.Templates as T

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
    Keys.onEnterPressed: root.clicked()
    Keys.onReturnPressed: root.clicked()
    focusPolicy: enabled ? Qt.StrongFocus : Qt.NoFocus
}
