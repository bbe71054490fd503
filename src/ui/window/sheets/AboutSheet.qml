import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// What the program is, its version, and under which terms it and its parts are given away.
Sheet {
    id: root

    required property WindowModel vm

    objectName: "about"
    title: L.tr("关于 Vellmoor")
    wantedWidth: Metrics.grown(420)

    onOpened: done.forceActiveFocus(Qt.TabFocusReason)

    contentItem: ColumnLayout {
        spacing: Metrics.wideGap

        RowLayout {
            spacing: 14

            SymbolTile {
                size: 52
                symbol: "sparkles"
                tint: Colors.cyan
            }

            ColumnLayout {
                spacing: 2

                Heading {
                    Layout.fillWidth: true
                    text: "Vellmoor"
                }

                BodyText {
                    Layout.fillWidth: true
                    color: Colors.vmSecondaryText
                    objectName: "about.version"
                    spoken: true
                    text: L.tr1("版本 %@", Qt.application.version)
                }
            }
        }

        Subheading {
            text: L.tr("许可证")
        }

        BodyText {
            Layout.fillWidth: true
            color: Colors.vmSecondaryText
            elide: Text.ElideNone
            spoken: true
            text: "Vellmoor: MIT\nQt: LGPL 3\nGLib: LGPL 2.1\nICU: Unicode\nBootstrap Icons: MIT"
        }

        RowLayout {
            spacing: Metrics.gap

            Item {
                Layout.fillWidth: true
            }

            PrimaryButton {
                id: done

                objectName: "about.done"
                text: L.tr("完成")

                onClicked: root.close()
            }
        }
    }
}
