import QtQuick
import QtQuick.Layouts
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

    component Sum: BodyText {
        required property string title
        required property string value

        Accessible.ignored: false
        Accessible.name: title + " " + value
        elide: Text.ElideNone
        height: Metrics.rowButton
        rightPadding: Metrics.wideGap
        text: title + " " + value
        verticalAlignment: Text.AlignVCenter
        visible: value !== ""
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

    SecondaryButton {
        compact: true
        enabled: root.vm.scan.ready
        objectName: "result.putBack"
        symbol: "arrow.uturn.backward"
        text: L.tr("放回")
        visible: root.report.returnable

        onClicked: {
            root.vm.putBackReported();
            root.leaving();
        }
    }

    SecondaryButton {
        compact: true
        enabled: root.vm.scan.ready
        ink: Colors.ink(Colors.red)
        objectName: "result.forGood"
        symbol: "trash"
        text: L.tr("永久删除这些项目")
        visible: root.report.returnable

        onClicked: root.vm.decision.askForGood(root.report.clean)
    }
}
