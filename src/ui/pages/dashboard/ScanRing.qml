import QtQuick
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// The ring: how far the scan is, and how much it found.
Item {
    id: root

    required property ScanModel scan
    property bool compact: false

    // Nothing was found: that is well, but nothing to fill a ring with.
    readonly property bool empty: scan.scanned && !scan.working && scan.itemCount === 0
    readonly property real value: scan.working ? scan.workProgress : (scan.scanned && !empty ? 1 : 0)
    readonly property string number: scan.working ? scan.progressText : scan.ringNumber

    Accessible.name: (number + " " + scan.ringUnit).trim()
    Accessible.role: Accessible.ProgressBar
    Spoken.value: value
    implicitHeight: compact ? Metrics.grown(80) : Metrics.grown(124)
    implicitWidth: implicitHeight

    ProgressRing {
        anchors.fill: parent
        color: Colors.cyan
        thickness: root.compact ? 6 : 9
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
        width: parent.width - Metrics.grown(root.compact ? 22 : 36)

        Display {
            font.pixelSize: root.compact ? Type.subheading : Type.display
            fontSizeMode: Text.HorizontalFit
            horizontalAlignment: Text.AlignHCenter
            minimumPixelSize: Type.caption
            spoken: false
            text: root.number
            visible: text !== ""
            width: parent.width
        }

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            color: root.empty ? Colors.green : Colors.cyan
            name: root.empty ? "checkmark.circle.fill" : "sparkles"
            size: root.compact ? 20 : 28
            visible: !root.scan.scanning && root.number === ""
        }

        Caption {
            horizontalAlignment: Text.AlignHCenter
            maximumLineCount: 2
            objectName: "ringUnit"
            text: root.scan.ringUnit
            lineHeight: root.compact ? 0.9 : 1
            topPadding: root.compact ? 0 : 2
            width: parent.width
            wrapMode: Text.Wrap
        }
    }
}
