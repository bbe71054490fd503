import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Pages
import Vellmoor.Theme

// The second column, for windows that are too narrow to have it beside the list.
Sheet {
    id: root

    required property WindowModel vm

    objectName: "overview"
    title: L.tr("显示概览")
    wantedHeight: 640
    wantedWidth: Metrics.secondaryWidth + 48

    contentItem: ColumnLayout {
        spacing: Metrics.gap

        RowLayout {
            Heading {
                Layout.fillWidth: true
                text: root.vm.moduleTitle
            }

            SoftIconButton {
                flat: true
                help: L.tr("关闭")
                objectName: "overview.close"
                symbol: "xmark.circle"

                onClicked: root.close()
            }
        }

        SecondaryColumn {
            Layout.fillHeight: true
            Layout.fillWidth: true
            ground: Colors.sheet
            vm: root.vm

            onViewAll: root.close()
        }
    }
}
