import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// What a clean or a memory optimisation did. Closing it forgets the report.
Sheet {
    id: root

    required property WindowModel vm
    readonly property ReportModel report: vm.report

    wantedHeight: Metrics.grown(report.failed || report.noteLines.length > 0 ? 540 : 480)
    objectName: "result"
    title: report.title
    wantedWidth: Metrics.grown(720)

    contentItem: ColumnLayout {
        spacing: 14

        RowLayout {
            spacing: 14

            SymbolTile {
                size: 52
                symbol: root.report.failed ? "exclamationmark.triangle.fill" : "checkmark.seal.fill"
                tint: root.report.nothingDone ? Colors.red : root.report.failed ? Colors.orange : Colors.green
            }

            ColumnLayout {
                spacing: 2

                Heading {
                    Layout.fillWidth: true
                    objectName: "result.title"
                    text: root.report.title
                }

                BodyText {
                    Layout.fillWidth: true
                    color: Colors.vmSecondaryText
                    maximumLineCount: 2
                    objectName: "result.subtitle"
                    spoken: true
                    text: root.report.subtitle
                    wrapMode: Text.Wrap
                }
            }
        }

        // Scrolls where large text leaves no room for all of it.
        ScrollColumn {
            id: results

            Layout.fillHeight: true
            Layout.fillWidth: true
            ground: Colors.sheet
            spacing: 14

            ResultMetrics {
                id: metrics

                Layout.fillHeight: false
                Layout.fillWidth: true
                report: root.report
            }

            ResultSums {
                id: sums

                Layout.fillWidth: true
                visible: root.report.hasSums
                vm: root.vm

                onLeaving: root.close()
            }

            ResultDetails {
                readonly property real rest: results.height - metrics.implicitHeight - results.spacing - (sums.visible ? sums.implicitHeight + results.spacing : 0)

                Layout.fillWidth: true
                implicitHeight: Math.max(Metrics.grown(root.report.failed && root.report.noteLines.length > 0 ? 190 : 110), rest)
                report: root.report
            }
        }

        RowLayout {
            spacing: 10

            SecondaryButton {
                objectName: "result.openTrash"
                symbol: "trash"
                text: L.tr("打开废纸篓")
                visible: !root.report.memory

                onClicked: root.vm.openTrash()
            }

            Item {
                Layout.fillWidth: true
            }

            SecondaryButton {
                enabled: root.vm.scan.ready
                objectName: "result.rescan"
                symbol: "arrow.clockwise"
                text: L.tr("重新扫描")

                onClicked: root.vm.rescanReported()
            }

            PrimaryButton {
                id: done

                objectName: "result.done"
                text: L.tr("完成")

                onClicked: root.close()
            }
        }
    }

    onClosed: vm.closeReport()
    onOpened: done.forceActiveFocus(Qt.TabFocusReason)
}
