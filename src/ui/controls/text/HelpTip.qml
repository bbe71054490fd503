import QtQuick
import QtQuick.Templates as T

// A short help text for its parent; the bubble is there only while it is wanted.
Loader {
    id: root

    property bool shown: false
    property string text
    readonly property bool wanted: shown && text !== "" && visible

    active: false
    anchors.fill: parent
    source: Qt.resolvedUrl("HelpBubble.qml")

    onLoaded: {
        const bubble = item as T.ToolTip;
        bubble.parent = root;
        bubble.text = text;
        bubble.open();
    }
    onWantedChanged: {
        if (!wanted)
            active = false;
    }

    // Waits here and not in the bubble: by then a row may have left its list, and with it the window.
    Timer {
        interval: 600
        running: root.wanted

        onTriggered: root.active = root.Window.window !== null
    }
}
