// qmllint disable unqualified
import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Lists
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

    RowList {
        id: list

        Layout.fillWidth: true
        Layout.rightMargin: -10
        bottomMargin: 2
        focus: false
        implicitHeight: Math.min(contentHeight + topMargin + bottomMargin, Metrics.grown(root.low ? 38 : 138))
        objectName: "largestItems"
        rows: root.candidates
        spacing: 10
        title: L.tr("最大项目")

        delegate: FileCandidateRow {
            rows: root.candidates
            width: list.rowWidth
        }
    }
}
