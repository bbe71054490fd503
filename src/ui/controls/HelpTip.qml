import QtQuick
import QtQuick.Templates as T

// A short help text for its parent; the bubble is there only while it is wanted.
Loader {
    id: root

    property bool shown: false
    property string text

    active: shown && text !== ""
    anchors.fill: parent
    source: Qt.resolvedUrl("HelpBubble.qml")

    onLoaded: {
        const bubble = item as T.ToolTip;
        bubble.text = text;
        bubble.open();
    }
}
