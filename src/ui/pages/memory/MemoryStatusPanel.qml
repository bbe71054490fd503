import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Lists
import Vellmoor.Models
import Vellmoor.Theme

// The pressure gauge and the four figures.
GlassPanel {
    id: root

    required property MemoryModel memory
    required property MemoryPartModel parts

    implicitHeight: content.implicitHeight + 16

    ColumnLayout {
        id: content

        anchors.left: parent.left
        anchors.leftMargin: 12
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.top: parent.top
        anchors.topMargin: 8
        spacing: Metrics.smallGap

        RowLayout {
            PanelHeader {
                Layout.fillWidth: true
                symbol: "memorychip"
                title: L.tr("内存状态")
            }

            Caption {
                objectName: "memoryTotal"
                spoken: true
                text: root.memory.total
                visible: root.memory.known
            }
        }

        RowLayout {
            spacing: 14

            PressureGauge {
                memory: root.memory
            }

            GridLayout {
                columnSpacing: 6
                columns: 2
                rowSpacing: 6

                MemoryMetricCard {
                    tint: Colors.cyan
                    symbol: "gauge"
                    title: L.tr("占用比例")
                    value: root.memory.usageText
                }

                MemoryMetricCard {
                    tint: Colors.orange
                    symbol: "memorychip"
                    title: L.tr("已使用")
                    value: root.memory.used
                }

                MemoryMetricCard {
                    tint: Colors.green
                    symbol: "checkmark.circle.fill"
                    title: L.tr("可用")
                    value: root.memory.available
                }

                MemoryMetricCard {
                    tint: Colors.mint
                    symbol: "arrow.triangle.2.circlepath"
                    title: L.tr("预计可释放")
                    value: root.memory.reclaimable
                }
            }
        }

        PartsBar {
            Layout.fillWidth: true
            part: "memoryPart"
            segments: root.parts
            visible: root.memory.known
        }

        Flow {
            Layout.fillWidth: true
            spacing: Metrics.wideGap
            visible: root.memory.known

            Repeater {
                model: root.parts

                Row {
                    id: entry

                    required property string title
                    required property string value
                    required property string tint

                    spacing: 6

                    Rectangle {
                        anchors.verticalCenter: parent.verticalCenter
                        color: Colors.tint(entry.tint)
                        height: 8
                        radius: 4
                        width: 8
                    }

                    Caption {
                        elide: Text.ElideNone
                        text: entry.title + " " + entry.value
                    }
                }
            }
        }

        Caption {
            Layout.fillWidth: true
            elide: Text.ElideNone
            objectName: "cachesNote"
            spoken: true
            text: L.tr("文件缓存，程序需要内存时会自动归还")
            visible: root.memory.hasCaches
            wrapMode: Text.Wrap
        }
    }
}
