import QtQuick
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// How tight memory is.
Item {
    id: root

    required property MemoryModel memory
    readonly property color tint: Colors.tint(memory.pressureTint)

    Accessible.name: (memory.usageText + " " + memory.pressure).trim()
    Accessible.role: Accessible.ProgressBar
    Spoken.value: memory.usage
    implicitHeight: Metrics.grown(84)
    implicitWidth: Metrics.grown(96)

    ProgressRing {
        anchors.horizontalCenter: parent.horizontalCenter
        color: root.tint
        height: Metrics.grown(96)
        spanAngle: 240
        startAngle: 240
        thickness: 8
        trackColor: Colors.track
        value: root.memory.usage
        width: Metrics.grown(96)

        Behavior on value  {
            NumberAnimation {
                duration: Motion.calm
                easing.type: Easing.OutCubic
            }
        }
    }

    Column {
        anchors.centerIn: parent
        anchors.verticalCenterOffset: 6

        // The share stands beside the gauge.
        Subheading {
            anchors.horizontalCenter: parent.horizontalCenter
            color: root.memory.known ? Colors.ink(root.tint) : Colors.vmSecondaryText
            objectName: "pressure"
            spoken: false
            text: root.memory.pressure
        }
    }
}
