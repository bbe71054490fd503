import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Theme

// A title and a value over a bar.
ColumnLayout {
    id: root

    required property string title
    required property string value
    property real level: 0
    property color tint: Colors.cyan

    Accessible.name: title + " " + value
    Accessible.role: Accessible.StaticText
    spacing: 6

    RowLayout {
        BodyText {
            Layout.fillWidth: true
            color: Colors.vmSecondaryText
            text: root.title
        }

        BodyText {
            font.weight: Font.DemiBold
            text: root.value
        }
    }

    ProgressLine {
        Layout.fillWidth: true
        tint: root.tint
        value: root.level
    }
}
