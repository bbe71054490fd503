// qmllint disable type
import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Lists
import Vellmoor.Models
import Vellmoor.Theme

// One application with what it left behind.
RowFrame {
    id: root

    required property CleanupRoles row
    required property CleanupListModel rows

    readonly property bool isApp: row.bundle !== ""

    Accessible.description: row.detail
    Accessible.name: row.title + " " + row.size
    Accessible.role: Accessible.ListItem
    Spoken.expandable: row.expandable
    Spoken.expanded: row.expanded
    Spoken.tick: row.tick
    help: heading.truncated ? row.title : ""
    implicitHeight: content.implicitHeight + 16
    leaving: row.leaving

    onTapped: rows.toggleExpanded(row.index)

    ColumnLayout {
        id: content

        anchors.left: parent.left
        anchors.leftMargin: 10
        anchors.right: parent.right
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8

        RowLayout {
            spacing: 10

            RowTick {
                row: root.row
                rows: root.rows
            }

            SymbolTile {
                icon: root.row.icon
                symbol: root.row.symbol
                tint: Colors.tint(root.row.tint)
            }

            ColumnLayout {
                Layout.fillWidth: true
                spacing: 2

                Subheading {
                    id: heading

                    Layout.fillWidth: true
                    spoken: false
                    text: root.row.title
                }

                Caption {
                    Layout.fillWidth: true
                    maximumLineCount: 2
                    text: root.row.detail
                    wrapMode: Text.Wrap
                }
            }

            Subheading {
                spoken: false
                text: root.row.size
                visible: root.isApp
            }

            ExpandButton {
                row: root.row
                rows: root.rows
            }
        }

        RowLayout {
            Layout.fillWidth: true
            Layout.rightMargin: 6
            spacing: Metrics.gap
            visible: root.isApp

            AppInfoPill {
                Layout.fillHeight: true // as high as its neighbours, whatever their letters need
                Layout.fillWidth: true
                Layout.preferredWidth: 6
                tint: Colors.blue
                title: L.tr("应用本体")
                value: root.row.bundle
            }

            AppInfoPill {
                Layout.fillHeight: true // as high as its neighbours, whatever their letters need
                Layout.fillWidth: true
                Layout.preferredWidth: 5
                tint: Colors.orange
                title: L.tr("关联残留")
                value: root.row.leftovers
            }

            AppInfoPill {
                Layout.fillHeight: true // as high as its neighbours, whatever their letters need
                Layout.fillWidth: true
                Layout.preferredWidth: 6
                objectName: root.row.name + ".status"
                tint: root.row.running ? Colors.red : Colors.green
                title: L.tr("状态")
                value: root.row.running ? L.tr("运行中") + " · " + L.tr("请先退出") : L.tr("可卸载")
            }
        }
    }
}
