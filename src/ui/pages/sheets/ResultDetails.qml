// qmllint disable unqualified
import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// Why paths failed or were kept, or that none did.
Rectangle {
    id: root

    required property ReportModel report

    border.color: Colors.vmLine
    color: Colors.popup
    radius: Metrics.rowRadius

    // Lines under a heading, as many as there is room for.
    component Lines: ColumnLayout {
        id: lines

        property alias listName: list.objectName
        required property var model
        required property string symbol
        required property color tint
        required property string title

        Layout.fillHeight: true
        // Short lists leave the room to long ones.
        Layout.maximumHeight: heading.implicitHeight + spacing + list.contentHeight
        Layout.minimumHeight: Math.min(Layout.maximumHeight, heading.implicitHeight + spacing + Metrics.grown(44))
        Layout.preferredHeight: Layout.maximumHeight
        spacing: Metrics.gap
        visible: list.count > 0

        RowLayout {
            id: heading

            Subheading {
                Layout.fillWidth: true
                text: lines.title
            }

            SoftIconButton {
                flat: true
                help: L.tr("复制全部")
                objectName: list.objectName === "result.failures" ? "result.copyFailures" : ""
                size: Metrics.rowButton
                symbol: "doc.on.clipboard"
                visible: objectName !== ""

                onClicked: root.report.copyFailures()
            }
        }

        ListView {
            id: list

            Accessible.name: lines.title
            Accessible.role: Accessible.List
            Layout.fillHeight: true
            Layout.fillWidth: true
            Keys.onPressed: event => {
                if (event.matches(StandardKey.Copy))
                    root.report.copyFailures();
            }
            activeFocusOnTab: true
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            model: lines.model
            spacing: 6

            ScrollFade {
                anchors.left: parent.left
                anchors.right: parent.right
                ground: Colors.popup
                parent: list
                view: list
                y: list.height - height
            }

            T.ScrollBar.vertical: ScrollLine {
            }
            delegate: RowLayout {
                id: line

                required property string modelData

                Accessible.name: modelData
                Accessible.role: Accessible.ListItem
                spacing: Metrics.gap
                width: list.width - 14
                x: LayoutMirroring.enabled ? 14 : 0

                Symbol {
                    Layout.alignment: Qt.AlignTop
                    Layout.topMargin: 2
                    color: lines.tint
                    name: lines.symbol
                    size: 14
                }

                // Can be marked and copied.
                TextEdit {
                    Accessible.ignored: true
                    Layout.fillWidth: true
                    activeFocusOnPress: true
                    color: Colors.ink(lines.tint)
                    font.family: Type.family
                    font.pixelSize: Type.body
                    horizontalAlignment: TextEdit.AlignLeft
                    readOnly: true
                    selectByMouse: true
                    selectedTextColor: Colors.onAccent
                    selectionColor: Colors.primary
                    text: line.modelData
                    textFormat: TextEdit.PlainText
                    wrapMode: TextEdit.Wrap
                }
            }
        }
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 14
        spacing: 14
        visible: root.report.failed || root.report.noteLines.length > 0

        Lines {
            listName: "result.failures"
            model: root.report.failureLines
            symbol: "xmark.circle"
            tint: Colors.red
            title: L.tr("失败原因")
        }

        Lines {
            listName: "result.notes"
            model: root.report.noteLines
            symbol: "exclamationmark.triangle.fill"
            tint: Colors.orange
            title: L.tr("已保留及提示")
        }

        Item {
            Layout.fillHeight: true
        }
    }

    Column {
        anchors.centerIn: parent
        spacing: 4
        visible: !root.report.failed && root.report.noteLines.length === 0
        width: parent.width - 28

        SymbolTile {
            anchors.horizontalCenter: parent.horizontalCenter
            size: root.height < 130 ? 32 : 44
            symbol: "checkmark.circle.fill"
            tint: Colors.green
        }

        Subheading {
            horizontalAlignment: Text.AlignHCenter
            objectName: "result.noFailures"
            text: L.tr("没有失败项目")
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
