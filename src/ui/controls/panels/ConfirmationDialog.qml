// qmllint disable unqualified
import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Theme

// Asks before an action. Return accepts only when its button has the focus, Control and Return accept at once, the
// arrows go from button to button, Escape cancels.
Sheet {
    id: root

    property string message
    property string acceptText
    property string cancelText
    property string symbol: "exclamationmark.triangle.fill"
    property color tint: Colors.orange
    property bool destructive: false
    // Further lines under the message.
    property var parts: []

    signal accepted

    function accept(): void {
        // First: without movement closing is over at once, and what it drops would be gone before it is agreed to.
        accepted();
        close();
    }

    onOpened: cancel.forceActiveFocus(Qt.TabFocusReason)
    wantedWidth: Metrics.grown(440)

    contentItem: ColumnLayout {
        spacing: Metrics.wideGap

        RowLayout {
            Layout.fillWidth: true
            spacing: 14

            SymbolTile {
                Layout.alignment: Qt.AlignTop
                size: 44
                symbol: root.symbol
                tint: root.tint
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
                    lineHeight: 1.25
                    objectName: root.objectName + ".message"
                    spoken: true
                    text: root.message
                    wrapMode: Text.Wrap
                }

                Repeater {
                    model: root.parts

                    BodyText {
                        required property string modelData

                        Layout.fillWidth: true
                        font.weight: Font.DemiBold
                        objectName: root.objectName + ".part"
                        spoken: true
                        text: modelData
                        wrapMode: Text.Wrap
                    }
                }
            }
        }

        RowLayout {
            Layout.topMargin: Metrics.gap
            spacing: 10

            Item {
                Layout.fillWidth: true
            }

            SecondaryButton {
                id: cancel

                KeyNavigation.right: acceptButton
                objectName: root.objectName + ".cancel"
                text: root.cancelText
                onClicked: root.close()
            }

            PrimaryButton {
                id: acceptButton

                destructive: root.destructive
                objectName: root.objectName + ".accept"
                text: root.acceptText
                onClicked: root.accept()
            }
        }
    }

    Shortcut {
        enabled: root.opened
        sequences: ["Ctrl+Return", "Ctrl+Enter"]

        onActivated: root.accept()
    }
}
