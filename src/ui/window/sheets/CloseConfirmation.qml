import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// Before the window is closed while a clean runs: it may come to its end first, or stop after the item at hand.
Sheet {
    id: root

    required property WindowModel vm

    objectName: "closing"
    title: L.tr("清理仍在进行")
    wantedWidth: Metrics.grown(480)

    onOpened: back.forceActiveFocus(Qt.TabFocusReason)

    // The clean has ended meanwhile: there is nothing to ask any more.
    Connections {
        function onBusyChanged(): void {
            if (!root.vm.scan.cleaning)
                root.close();
        }

        target: root.vm
    }

    contentItem: ColumnLayout {
        spacing: Metrics.wideGap

        RowLayout {
            spacing: 14

            SymbolTile {
                Layout.alignment: Qt.AlignTop
                size: 44
                symbol: "exclamationmark.triangle.fill"
                tint: Colors.orange
            }

            ColumnLayout {
                spacing: 6

                Heading {
                    Layout.fillWidth: true
                    elide: Text.ElideNone
                    text: root.title
                    wrapMode: Text.Wrap
                }

                BodyText {
                    Layout.fillWidth: true
                    color: Colors.vmSecondaryText
                    elide: Text.ElideNone
                    objectName: "closing.message"
                    spoken: true
                    text: L.tr("可以先完成清理再关闭，或在处理完当前项目后停止；未处理的项目保持原样。")
                    wrapMode: Text.Wrap
                }
            }
        }

        Flow {
            Layout.fillWidth: true
            Layout.topMargin: Metrics.gap
            layoutDirection: Qt.RightToLeft
            spacing: 10

            PrimaryButton {
                objectName: "closing.finish"
                text: L.tr("完成后关闭")

                onClicked: {
                    root.vm.closeAfterClean(false);
                    root.close();
                }
            }

            SecondaryButton {
                objectName: "closing.stop"
                text: L.tr("停止并关闭")

                onClicked: {
                    root.vm.closeAfterClean(true);
                    root.close();
                }
            }

            SecondaryButton {
                id: back

                objectName: "closing.back"
                text: L.tr("返回")

                onClicked: root.close()
            }
        }
    }
}
