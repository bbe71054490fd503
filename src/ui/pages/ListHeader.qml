import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Theme

// The heading of a list: its title, its counter, and what stands at its right.
RowLayout {
    id: root

    required property string title
    property string counter
    default property alias trailing: place.data

    spacing: Metrics.gap

    Subheading {
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
