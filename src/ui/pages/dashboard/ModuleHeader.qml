import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// The header of every module but Smart Scan.
GlassPanel {
    id: root

    required property WindowModel vm
    readonly property ScanModel scan: vm.scan

    implicitHeight: Math.max(Metrics.moduleHeaderHeight, line.implicitHeight + 28)

    RowLayout {
        id: line

        anchors.fill: parent
        anchors.leftMargin: 20
        anchors.rightMargin: 20
        spacing: 18

        SymbolTile {
            size: 56
            symbol: root.vm.moduleSymbol
            tint: Colors.cyan
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 4

            Heading {
                Layout.fillWidth: true
                text: root.scan.headline
            }

            BodyText {
                Layout.fillWidth: true
                color: Colors.vmSecondaryText
                maximumLineCount: 2
                spoken: true
                text: root.scan.description
                wrapMode: Text.Wrap
            }

            RowLayout {
                Layout.topMargin: 2
                spacing: 6

                Symbol {
                    color: root.scan.scanned || root.scan.scanning ? Colors.cyan : Colors.gray
                    name: "checkmark.seal.fill"
                    size: 14
                }

                BodyText {
                    Layout.fillWidth: true
                    font.weight: Font.DemiBold
                    objectName: "headerTitle"
                    spoken: true
                    text: root.scan.title
                }
            }
        }

        ScanButton {
            startSymbol: "magnifyingglass"
            startText: L.tr("扫描此模块")
            vm: root.vm
        }
    }
}
