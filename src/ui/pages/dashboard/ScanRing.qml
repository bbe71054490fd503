import QtQuick
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// The ring: how far the scan is, and how much it found.
Item {
    id: root

    required property ScanModel scan

    // What assistive technology reads of a progress bar where Qt passes it on (6.4 does not).
    readonly property real value: scan.scanning ? scan.progress : (scan.scanned ? 1 : 0)
    readonly property real minimumValue: 0
    readonly property real maximumValue: 1

    readonly property string number: scan.scanning ? Math.round(scan.progress * 100) + "%" : scan.ringNumber

    Accessible.name: (number + " " + scan.ringUnit).trim()
    Accessible.role: Accessible.ProgressBar
    implicitHeight: 124
    implicitWidth: 124

    ProgressRing {
        anchors.fill: parent
        color: Colors.cyan
        thickness: 9
        trackColor: Colors.track
        value: root.value

        Behavior on value  {
            NumberAnimation {
                duration: Motion.calm
                easing.type: Easing.OutCubic
            }
        }
    }

    Column {
        anchors.centerIn: parent
        width: parent.width - 36

        Display {
            fontSizeMode: Text.HorizontalFit
            horizontalAlignment: Text.AlignHCenter
            minimumPixelSize: Type.body
            spoken: false
            text: root.number
            visible: text !== ""
            width: parent.width
        }

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            color: Colors.cyan
            name: "sparkles"
            size: 28
            visible: !root.scan.scanning && root.number === ""
        }

        Caption {
            horizontalAlignment: Text.AlignHCenter
            maximumLineCount: 2
            objectName: "ringUnit"
            text: root.scan.ringUnit
            topPadding: 2
            width: parent.width
            wrapMode: Text.Wrap
        }
    }
}
