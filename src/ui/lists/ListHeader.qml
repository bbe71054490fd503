import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Theme

// The heading of a list: its title, its counter, and what stands at its right.
RowLayout {
    id: root

    required property string title
    property string counter
    // Below another heading.
    property bool small: false
    default property alias trailing: place.data

    spacing: Metrics.gap

    Subheading {
        font.pixelSize: root.small ? Type.body : Type.subheading
        text: root.title
    }

    Badge {
        objectName: "list.counter"
        spoken: true
        text: root.counter
        tint: Colors.cyan
        visible: root.counter !== ""
    }

    Item {
        Layout.fillWidth: true
    }

    RowLayout {
        id: place

        spacing: Metrics.gap
    }
}
