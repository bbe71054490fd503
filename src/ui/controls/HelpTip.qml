import QtQuick
import QtQuick.Templates as T

// A short help text for its parent; the bubble is there only while it is wanted.
Loader {
    id: root

    property bool shown: false
    property string text

    // A row that its list keeps for later use has no window.
    active: shown && text !== "" && Window.window !== null && visible
    anchors.fill: parent
    source: Qt.resolvedUrl("HelpBubble.qml")

    onLoaded: {
        const bubble = item as T.ToolTip;
        bubble.text = text;
        bubble.open();
    }
}
