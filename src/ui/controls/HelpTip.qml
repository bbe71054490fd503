import QtQuick
import QtQuick.Templates as T

// A short help text for its parent; the bubble is there only while it is wanted.
Loader {
    id: root

    property bool shown: false
    property string text
    // A row that its list keeps for later use has no window.
    readonly property bool wanted: shown && text !== "" && Window.window !== null && visible

    active: false
    anchors.fill: parent
    source: Qt.resolvedUrl("HelpBubble.qml")

    onLoaded: {
        const bubble = item as T.ToolTip;
        bubble.text = text;
        bubble.open();
    }
    onWantedChanged: {
        // Closed before it goes: its delay must not end in a bubble without a window.
        (item as T.ToolTip)?.close();
        active = wanted;
    }
}
