import QtQuick
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// Where it went: in the Trash and still on the disk, gone for good, and by how much the disks have more room now.
Flow {
    id: root

    required property WindowModel vm
    readonly property ReportModel report: vm.report

    // Nothing is left to be read here.
    signal leaving

    spacing: Metrics.gap

    // A figure over what it is.
    component Sum: Item {
        id: sum

        required property string title
        required property string value
        readonly property string text: title + " " + value

        Accessible.name: text
        Accessible.role: Accessible.StaticText
        implicitHeight: Metrics.grown(36)
        implicitWidth: Math.max(figure.implicitWidth, label.implicitWidth) + Metrics.panelGap
        visible: value !== ""

        BodyText {
            id: figure

            elide: Text.ElideNone
            font.weight: Font.DemiBold
            text: sum.value
        }

        Caption {
            id: label

            anchors.bottom: parent.bottom
            elide: Text.ElideNone
            text: sum.title
        }
    }

    // A button in the middle of the line of figures.
    component Way: Item {
        default property alias button: place.data

        implicitHeight: Metrics.grown(36)
        implicitWidth: place.childrenRect.width

        Item {
            id: place

            anchors.verticalCenter: parent.verticalCenter
            height: Metrics.rowButton
            width: parent.width
        }
    }

    Sum {
        objectName: "result.trashed"
        title: L.tr("在废纸篓中")
        value: root.report.trashed
    }

    Sum {
        objectName: "result.removed"
        title: L.tr("已永久删除")
        value: root.report.removedForGood
    }

    Sum {
        objectName: "result.freedNow"
        title: L.tr("现已释放")
        value: root.report.freedNow
    }

    Way {
        visible: root.report.returnable

        SecondaryButton {
            compact: true
            enabled: root.vm.scan.ready
            objectName: "result.putBack"
            symbol: "arrow.uturn.backward"
            text: L.tr("放回")

            onClicked: {
                root.vm.putBackReported();
                root.leaving();
            }
        }
    }

    Way {
        visible: root.report.returnable

        SecondaryButton {
            compact: true
            enabled: root.vm.scan.ready
            ink: Colors.ink(Colors.red)
            objectName: "result.forGood"
            symbol: "trash"
            text: L.tr("永久删除这些项目")

            onClicked: root.vm.decision.askForGood(root.report.clean)
        }
    }
}
