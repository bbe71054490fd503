import QtQuick
import Vellmoor.Models
import Vellmoor.Theme

// The window itself: its sizes, its keys, and that it tells when it became the active one.
Window {
    id: root

    required property WindowModel vm

    color: Colors.groundMiddle
    height: Metrics.windowHeight
    minimumHeight: Metrics.windowHeight
    minimumWidth: Metrics.windowWidth
    title: "Vellmoor"
    width: Metrics.windowWidth

    onActiveChanged: {
        if (active)
            vm.activated();
    }

    ContentView {
        anchors.fill: parent
        vm: root.vm

        // Here and not in the window, so that an open sheet holds it back.
        Shortcut {
            sequences: ["Ctrl+R", "F5"]

            onActivated: root.vm.refresh()
        }
    }

    Shortcut {
        sequences: ["Ctrl+Q"]

        onActivated: Qt.quit()
    }
}
