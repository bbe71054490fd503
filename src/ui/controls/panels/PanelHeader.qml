import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Theme

// The heading of a small panel.
RowLayout {
    id: root

    required property string symbol
    required property string title
    property color tint: Colors.cyan

    spacing: Metrics.gap

    Symbol {
        color: root.tint
        name: root.symbol
        size: 15
    }

    Subheading {
        Layout.fillWidth: true
        text: root.title
    }
}
