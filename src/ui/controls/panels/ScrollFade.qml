import QtQuick
import Vellmoor.Theme

// Fades what goes on below the edge of a view.
Rectangle {
    id: root

    required property Flickable view
    property color ground: Colors.panelGround

    height: 28
    radius: Metrics.rowRadius // it stands in panels with round corners
    visible: view !== null && !view.atYEnd

    gradient: Gradient {
        GradientStop {
            color: Colors.faint(root.ground, 0)
            position: 0
        }

        GradientStop {
            color: root.ground
            position: 1
        }
    }
}
