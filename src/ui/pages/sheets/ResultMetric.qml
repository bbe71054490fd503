import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Theme

// One figure of a report.
Rectangle {
    id: root

    required property string title
    required property string value
    required property string symbol
    required property color tint

    Accessible.name: title + " " + value
    Accessible.role: Accessible.StaticText
    Layout.fillHeight: true // as high as its neighbours, whatever their letters need
    Layout.fillWidth: true
    Layout.minimumWidth: 1
    Layout.preferredWidth: 1
    border.color: Colors.vmLine
    color: Colors.faint(tint, 0.07)
    implicitHeight: column.implicitHeight + 28
    radius: Metrics.rowRadius

    ColumnLayout {
        id: column

        anchors.left: parent.left
        anchors.margins: 14
        anchors.right: parent.right
        anchors.top: parent.top
        spacing: Metrics.gap

        SymbolTile {
            size: Metrics.smallTile
            symbol: root.symbol
            tint: root.tint
        }

        ColumnLayout {
            spacing: 0

            Heading {
                Layout.fillWidth: true
                Layout.preferredHeight: Math.round(Type.heading * 1.45)
                fontSizeMode: Text.HorizontalFit
                minimumPixelSize: Type.body
                spoken: false
                text: root.value
            }

            Caption {
                Layout.fillWidth: true
                text: root.title
            }
        }
    }
}
