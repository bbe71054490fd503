import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// What the shown module's last scan found, or what is going on.
ColumnLayout {
    id: root

    required property ScanModel scan
    property string status
    property bool compact: false

    spacing: compact ? 0 : 4

    RowLayout {
        spacing: Metrics.gap

        Symbol {
            color: root.scan.scanned || root.scan.scanning ? Colors.cyan : Colors.gray
            name: "checkmark.seal.fill"
            size: root.compact ? 16 : 20
        }

        Heading {
            Layout.fillWidth: true
            font.pixelSize: root.compact ? Type.subheading : Type.heading
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Type.body
            objectName: "headerTitle"
            text: root.scan.title
        }
    }

    FontMetrics {
        id: lines

        font.family: Type.family
        font.pixelSize: status.font.pixelSize
    }

    // As high for one line as for two: nothing moves when a scan begins.
    BodyText {
        id: status

        Layout.fillWidth: true
        Layout.preferredHeight: Math.ceil(maximumLineCount * lines.lineSpacing) + 1
        color: Colors.vmSecondaryText
        font.pixelSize: root.compact ? Type.caption : Type.body
        maximumLineCount: root.compact ? 1 : 2
        objectName: "headerStatus"
        spoken: true
        text: root.status
        wrapMode: root.compact ? Text.NoWrap : Text.Wrap
    }
}
