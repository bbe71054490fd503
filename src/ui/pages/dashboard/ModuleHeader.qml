import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// The header of every module but Smart Scan. Once there are results it leaves the room to them.
GlassPanel {
    id: root

    required property WindowModel vm
    property bool compact: false
    readonly property ScanModel scan: vm.scan

    implicitHeight: Math.max(compact ? Metrics.compactHeaderHeight : Metrics.moduleHeaderHeight, line.implicitHeight + (compact ? 12 : 28))

    RowLayout {
        id: line

        anchors.fill: parent
        anchors.leftMargin: root.compact ? 12 : 20
        anchors.rightMargin: root.compact ? 14 : 20
        spacing: root.compact ? 12 : 18

        SymbolTile {
            size: root.compact ? 40 : 56
            symbol: root.vm.moduleSymbol
            tint: Colors.cyan
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: root.compact ? 2 : 4

            Heading {
                Layout.fillWidth: true
                font.pixelSize: root.compact ? Type.subheading : Type.heading
                text: root.scan.headline
            }

            BodyText {
                Layout.fillWidth: true
                color: Colors.vmSecondaryText
                maximumLineCount: 2
                spoken: true
                text: root.scan.description
                visible: !root.compact
                wrapMode: Text.Wrap
            }

            RowLayout {
                Layout.topMargin: root.compact ? 0 : 2
                spacing: 6

                Symbol {
                    color: root.scan.scanned || root.scan.scanning ? Colors.cyan : Colors.gray
                    name: "checkmark.seal.fill"
                    size: 14
                }

                BodyText {
                    Layout.fillWidth: true
                    Layout.maximumWidth: implicitWidth + 1
                    font.weight: Font.DemiBold
                    objectName: "headerTitle"
                    spoken: true
                    text: root.scan.title
                }

                BodyText {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1 // what the title leaves
                    color: Colors.vmSecondaryText
                    objectName: "headerFindings"
                    spoken: true
                    text: "· " + root.scan.findings
                    visible: root.compact && root.scan.findings !== ""
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
