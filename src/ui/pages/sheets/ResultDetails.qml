import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// Why paths failed, or that none did.
Rectangle {
    id: root

    required property ReportModel report

    border.color: Colors.vmLine
    color: Colors.popup
    radius: Metrics.rowRadius

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 14
        spacing: Metrics.gap
        visible: root.report.failed

        Subheading {
            text: L.tr("失败原因")
        }

        ListView {
            Accessible.name: L.tr("失败原因")
            Accessible.role: Accessible.List
            Layout.fillHeight: true
            Layout.fillWidth: true
            activeFocusOnTab: true
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            model: root.report.failureLines
            objectName: "result.failures"
            spacing: 6

            T.ScrollBar.vertical: ScrollLine {
            }
            delegate: RowLayout {
                id: line

                required property string modelData

                Accessible.name: modelData
                Accessible.role: Accessible.ListItem
                spacing: Metrics.gap
                width: ListView.view.width - 14

                Symbol {
                    Layout.alignment: Qt.AlignTop
                    Layout.topMargin: 2
                    color: Colors.red
                    name: "xmark.circle"
                    size: 14
                }

                BodyText {
                    Layout.fillWidth: true
                    color: Colors.ink(Colors.red)
                    elide: Text.ElideNone
                    text: line.modelData
                    wrapMode: Text.Wrap
                }
            }
        }
    }

    Column {
        anchors.centerIn: parent
        spacing: 6
        visible: !root.report.failed
        width: parent.width - 28

        SymbolTile {
            anchors.horizontalCenter: parent.horizontalCenter
            size: 44
            symbol: "checkmark.circle.fill"
            tint: Colors.green
        }

        Subheading {
            horizontalAlignment: Text.AlignHCenter
            objectName: "result.noFailures"
            text: L.tr("没有失败项目")
            topPadding: 6
            width: parent.width
        }

        BodyText {
            color: Colors.vmSecondaryText
            horizontalAlignment: Text.AlignHCenter
            spoken: true
            text: L.tr("选中项目已按确认执行。")
            visible: root.report.caches === ""
            width: parent.width
        }

        BodyText {
            color: Colors.vmSecondaryText
            horizontalAlignment: Text.AlignHCenter
            objectName: "result.caches"
            spoken: true
            text: root.report.caches
            visible: text !== ""
            width: parent.width
        }

        Caption {
            horizontalAlignment: Text.AlignHCenter
            spoken: true
            text: L.tr("文件缓存，程序需要内存时会自动归还")
            visible: root.report.caches !== ""
            width: parent.width
            wrapMode: Text.Wrap
        }
    }
}
