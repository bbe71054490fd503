import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Vellmoor.Theme

// A column that scrolls when it is higher than its place. The shadows of its panels may pass its edges.
Flickable {
    id: root

    property alias spacing: column.spacing
    default property alias contents: column.data

    boundsBehavior: Flickable.StopAtBounds
    contentHeight: column.implicitHeight
    contentWidth: width
    flickableDirection: Flickable.VerticalFlick
    interactive: contentHeight > height

    T.ScrollBar.vertical: ScrollLine {
        anchors.left: root.right
        anchors.leftMargin: 4
    }

    ColumnLayout {
        id: column

        spacing: Metrics.panelGap
        width: root.width
    }
}
