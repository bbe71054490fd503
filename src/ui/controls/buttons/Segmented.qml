// qmllint disable unqualified
import QtQuick
import QtQuick.Templates as T
import Vellmoor.Controls
import Vellmoor.Theme

// One choice of a few, all visible. It is one stop of the Tab key; left and right move the choice and the keyboard.
Rectangle {
    id: root

    // Objects with "value" and "title".
    required property var choices
    required property string current
    property string name: objectName

    signal chosen(string value)

    color: Colors.field
    implicitHeight: Metrics.rowButton + 2
    implicitWidth: row.implicitWidth + 4
    radius: height / 2

    function step(by: int): void {
        const here = choices.findIndex(choice => choice.value === current);
        const next = choices[here + by];
        if (next) {
            chosen(next.value);
            segments.itemAt(here + by).forceActiveFocus(Qt.TabFocusReason);
        }
    }

    Row {
        id: row

        anchors.centerIn: parent

        Repeater {
            id: segments

            model: root.choices

            T.RadioButton {
                id: segment

                required property var modelData
                readonly property bool isCurrent: modelData.value === root.current

                Accessible.focusable: isCurrent
                Accessible.name: text
                Accessible.onPressAction: {
                    if (segment.enabled)
                        segment.clicked();
                }
                Accessible.onToggleAction: {
                    if (segment.enabled)
                        segment.clicked();
                }
                Spoken.tick: isCurrent ? Qt.Checked : Qt.Unchecked
                checked: isCurrent
                focusPolicy: isCurrent || activeFocus ? Qt.StrongFocus : Qt.ClickFocus // Qt minds losing it under the keyboard
                height: root.height - 4
                objectName: root.name + "." + modelData.value
                text: modelData.title
                width: Math.ceil(widest.advanceWidth) + 18

                background: Rectangle {
                    border.color: segment.isCurrent ? Colors.vmLine : Colors.clear
                    color: segment.isCurrent ? Colors.popup : Colors.clear
                    radius: height / 2

                    FocusRing {
                        radius: height / 2
                        shown: segment.visualFocus
                    }
                }
                contentItem: Item {
                    // As wide as when it is chosen: nothing moves.
                    TextMetrics {
                        id: widest

                        font.family: Type.family
                        font.pixelSize: Type.caption
                        font.weight: Font.DemiBold
                        text: segment.text
                    }

                    Caption {
                        anchors.centerIn: parent
                        color: segment.isCurrent ? Colors.vmText : Colors.vmSecondaryText
                        font.weight: segment.isCurrent ? Font.DemiBold : Font.Normal
                        text: segment.text
                    }
                }
                Keys.onLeftPressed: root.step(-1)
                Keys.onRightPressed: root.step(1)
                onClicked: root.chosen(modelData.value)
            }
        }
    }
}
