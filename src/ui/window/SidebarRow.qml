import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Vellmoor.Controls
import Vellmoor.Theme

// One module in the sidebar.
T.TabButton {
    id: root

    required property string module
    required property string title
    required property string subtitle
    required property string symbol
    property bool isSelected: false
    property bool narrow: false
    // In a low window all modules are in sight without their explanations.
    property bool low: false

    Accessible.description: subtitle
    Accessible.name: title
    Accessible.onPressAction: {
        if (root.enabled)
            root.clicked();
    }
    Accessible.selectable: true
    Accessible.selected: isSelected
    autoExclusive: false
    checkable: false
    focusPolicy: Qt.StrongFocus
    implicitHeight: root.narrow ? 40 : Math.max(root.low ? Metrics.lowSidebarRow : Metrics.sidebarRow, line.implicitHeight + 10)
    objectName: "sidebar." + module

    background: Rectangle {
        border.color: root.isSelected ? Colors.vmLine : Colors.clear
        color: root.isSelected ? Colors.rowHover : (root.hovered ? Colors.row : Colors.clear)
        radius: Metrics.rowRadius

        Behavior on color  {
            ColorAnimation {
                duration: Motion.quick
            }
        }

        FocusRing {
            anchors.margins: 0
            shown: root.visualFocus
        }
    }
    contentItem: Item {
        RowLayout {
            id: line

            anchors.left: parent.left
            anchors.leftMargin: root.narrow ? 12 : 8
            anchors.right: parent.right
            anchors.rightMargin: 3
            anchors.verticalCenter: parent.verticalCenter
            spacing: Metrics.gap

            SymbolTile {
                grows: !root.narrow
                size: Metrics.smallTile
                symbol: root.symbol
                tint: root.isSelected ? Colors.cyan : Colors.vmSecondaryText
            }

            ColumnLayout {
                spacing: 0
                visible: !root.narrow

                BodyText {
                    Layout.fillWidth: true
                    font.weight: root.isSelected ? Font.DemiBold : Font.Medium
                    text: root.title
                }

                Caption {
                    id: explanation

                    Layout.fillWidth: true
                    font.letterSpacing: -0.2
                    text: root.subtitle
                    visible: !root.low
                }
            }
        }
    }
    Keys.onEnterPressed: root.clicked()
    Keys.onReturnPressed: root.clicked()

    HelpTip {
        shown: root.hovered && (root.narrow || root.low || explanation.truncated)
        text: root.narrow ? root.title : root.subtitle
    }
}
