import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Pages
import Vellmoor.Theme

// The largest files, for reading only; three lines fit, the bar shows that there are more.
ColumnLayout {
    id: root

    required property FileCandidateModel candidates
    // There is room for one line only.
    property bool low: false

    spacing: Metrics.gap

    Subheading {
        text: L.tr("最大项目")
    }

    ListView {
        Accessible.name: L.tr("最大项目")
        Accessible.role: Accessible.List
        Layout.fillWidth: true
        Layout.rightMargin: -10
        activeFocusOnTab: true
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        implicitHeight: Math.min(contentHeight, Metrics.grown(root.low ? 36 : 134))
        model: root.candidates
        spacing: 10

        T.ScrollBar.vertical: ScrollLine {
        }
        delegate: FileCandidateRow {
            width: ListView.view.width - 16
        }
    }
}
