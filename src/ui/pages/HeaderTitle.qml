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
            color: Colors.cyan
            name: "checkmark.seal.fill"
            size: 20
        }

        Heading {
            Layout.fillWidth: true
            objectName: "headerTitle"
            text: root.scan.title
        }
    }

    BodyText {
        Layout.fillWidth: true
        color: Colors.vmSecondaryText
        maximumLineCount: 2
        spoken: true
        text: root.status
        visible: text !== ""
        wrapMode: Text.Wrap
    }
}
