import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Theme

// A title and its figure on one line.
RowLayout {
    id: root

    required property string title
    required property string value
    property color tint: Colors.vmText
    // Not counted yet: not to be read as a result.
    property bool muted: false

    Accessible.name: title + " " + value
    Accessible.role: Accessible.StaticText

    BodyText {
        Layout.fillWidth: true
        color: Colors.vmSecondaryText
        text: root.title
    }

    BodyText {
        color: root.muted ? Colors.vmSecondaryText : root.tint
        font.weight: root.muted ? Font.Normal : Font.DemiBold
        text: root.value
    }
}
