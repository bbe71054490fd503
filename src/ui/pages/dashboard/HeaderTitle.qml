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

    spacing: 4

    RowLayout {
        spacing: Metrics.gap

        Symbol {
            color: root.scan.scanned || root.scan.scanning ? Colors.cyan : Colors.gray
            name: "checkmark.seal.fill"
            size: 20
        }

        Heading {
            Layout.fillWidth: true
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Type.subheading
            objectName: "headerTitle"
            text: root.scan.title
        }
    }

    FontMetrics {
        id: lines

        font.family: Type.family
        font.pixelSize: Type.body
    }

    // As high for one line as for two: nothing moves when a scan begins.
    BodyText {
        Layout.fillWidth: true
        color: Colors.vmSecondaryText
        Layout.preferredHeight: Math.ceil(2 * lines.lineSpacing) + 1
        maximumLineCount: 2
        spoken: true
        text: root.status
        wrapMode: Text.Wrap
    }
}
