import QtQuick
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// How tight memory is.
Item {
    id: root

    required property MemoryModel memory
    readonly property color tint: Colors.tint(memory.pressureTint)

    // What assistive technology reads of a progress bar where Qt passes it on (6.4 does not).
    readonly property real value: memory.usage
    readonly property real minimumValue: 0
    readonly property real maximumValue: 1

    Accessible.name: (memory.usageText + " " + memory.pressure).trim()
    Accessible.role: Accessible.ProgressBar
    implicitHeight: 100
    implicitWidth: 112

    ProgressRing {
        anchors.horizontalCenter: parent.horizontalCenter
        color: root.tint
        height: 112
        spanAngle: 240
        startAngle: 240
        thickness: 9
        trackColor: Colors.track
        value: root.memory.usage
        width: 112

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

        Heading {
            anchors.horizontalCenter: parent.horizontalCenter
            spoken: false
            text: root.memory.usageText
        }

        Caption {
            anchors.horizontalCenter: parent.horizontalCenter
            color: Colors.ink(root.tint)
            font.weight: Font.Medium
            objectName: "pressure"
            text: root.memory.pressure
        }
    }
}
