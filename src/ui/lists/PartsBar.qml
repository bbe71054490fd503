// qmllint disable unqualified
import QtQuick
import Vellmoor.Models
import Vellmoor.Theme

// The parts of a whole side by side, each as wide as its share.
Item {
    id: root

    required property RecordListModel segments
    // Begins the object names of the parts.
    property string part: "segment"

    implicitHeight: 12

    Rectangle {
        anchors.fill: parent
        color: Colors.track
        radius: height / 2
    }

    Row {
        anchors.fill: parent
        spacing: 2

        Repeater {
            model: root.segments

            Rectangle {
                required property double fraction
                required property string tint
                required property string title
                required property string value
                property real shown: fraction // moves; the width itself follows the window at once

                Accessible.name: (title + " " + value).trim()
                Accessible.role: Accessible.StaticText
                color: Colors.tint(tint)
                height: root.height
                objectName: root.part + "." + tint
                radius: height / 2
                width: Math.max(0, (root.width - 2 * (root.segments.count - 1)) * shown)

                Behavior on shown  {
                    NumberAnimation {
                        duration: Motion.calm
                        easing.type: Easing.OutCubic
                    }
                }
            }
        }
    }
}
