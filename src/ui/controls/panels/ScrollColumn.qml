import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Vellmoor.Theme

// A column that scrolls when it is higher than its place. What scrolls is cut in the middle of the gaps around it,
// so that the shadows of its panels keep their width.
Item {
    id: root

    property alias spacing: column.spacing
    default property alias contents: column.data
    // What lies behind the lower edge.
    property color ground: Colors.groundMiddle

    Flickable {
        id: view

        anchors.fill: parent
        anchors.margins: -Metrics.panelGap / 2
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        contentHeight: column.implicitHeight + Metrics.panelGap
        contentWidth: width
        flickableDirection: Flickable.VerticalFlick
        interactive: contentHeight > height

        T.ScrollBar.vertical: ScrollLine {
            implicitWidth: 7
            padding: 1.5
            quiet: true
        }

        ColumnLayout {
            id: column

            spacing: Metrics.panelGap
            width: root.width
            x: Metrics.panelGap / 2
            y: Metrics.panelGap / 2
        }
    }

    FocusFollower {
        view: view
    }

    ScrollFade {
        anchors.bottom: view.bottom
        anchors.left: view.left
        anchors.leftMargin: Metrics.panelGap / 2
        anchors.right: view.right
        anchors.rightMargin: Metrics.panelGap / 2
        ground: root.ground
        view: view
    }
}
