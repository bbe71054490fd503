// qmllint disable unqualified
import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Lists
import Vellmoor.Models
import Vellmoor.Theme

// Every path that a clean would take, before anything is removed. Its ticks are the store's own.
Sheet {
    id: root

    required property WindowModel vm
    // It goes on to the clean.
    property bool cleans: false

    signal cleanAsked

    wantedHeight: Metrics.grown(640)
    objectName: "details"
    title: L.tr("清理前详情")

    onOpened: list.forceActiveFocus(Qt.TabFocusReason)
    wantedWidth: Metrics.grown(900)

    // Its rows are there as long as it is.
    Binding {
        property: "watched"
        target: root.vm.details
        value: root.visible
    }

    Component {
        id: done

        PrimaryButton {
            objectName: "details.done"
            text: L.tr("完成")

            onClicked: root.close()
        }
    }

    Component {
        id: back

        SecondaryButton {
            objectName: "details.done"
            text: L.tr("取消")

            onClicked: root.close()
        }
    }

    contentItem: ColumnLayout {
        spacing: Metrics.wideGap

        RowLayout {
            spacing: Metrics.gap

            ColumnLayout {
                spacing: 2

                Heading {
                    Layout.fillWidth: true
                    text: root.title
                }

                BodyText {
                    Layout.fillWidth: true
                    color: Colors.vmSecondaryText
                    objectName: "details.summary"
                    spoken: true
                    text: root.vm.offer.selectedPathsText
                }
            }

            SecondaryButton {
                compact: true
                objectName: "details.selectAll"
                symbol: "checkmark.circle"
                text: L.tr("全选")

                onClicked: root.vm.setAllSelected(true)
            }

            SecondaryButton {
                compact: true
                objectName: "details.deselectAll"
                symbol: "xmark.circle"
                text: L.tr("全不选")

                onClicked: root.vm.setAllSelected(false)
            }

            SoftIconButton {
                flat: true
                help: L.tr("关闭")
                objectName: "details.close"
                symbol: "xmark.circle"

                onClicked: root.close()
            }
        }

        Subheading {
            text: L.tr("清理项目")
        }

        ResultList {
            id: list

            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.rightMargin: -10
            category: Qt.resolvedUrl("CleanupDetailCategoryHeader.qml")
            listName: "detailsList"
            rows: root.vm.details
            scanning: root.vm.scan.scanning
            title: L.tr("清理项目")
        }

        LargestItems {
            Layout.fillWidth: true
            candidates: root.vm.candidates
            low: root.height / Metrics.growth < 460
            visible: root.vm.candidates.count > 0
        }

        RowLayout {
            spacing: 10

            Item {
                Layout.fillWidth: true
            }

            Loader {
                sourceComponent: root.cleans ? back : done
            }

            PrimaryButton {
                enabled: root.vm.offer.canClean
                objectName: "details.clean"
                symbol: "trash"
                text: root.vm.offer.cleanTitle
                visible: root.cleans

                onClicked: root.cleanAsked()
            }
        }
    }
}
