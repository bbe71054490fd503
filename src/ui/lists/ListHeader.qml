// qmllint disable unqualified type property
import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// The heading of a list: its title, its counter, what stands at its right, and the search below it while it is wanted.
ColumnLayout {
    id: root

    required property string title
    property string counter
    // Below another heading.
    property bool small: false
    // The list that can be searched and sorted; null: it is not one of those.
    property CleanupListModel rows: null
    property bool searching: false
    default property alias trailing: place.data

    // The keyboard goes back to the list.
    signal searchLeft

    function search(): void {
        if (!rows)
            return;
        searching = true;
        field.item.forceActiveFocus(Qt.ShortcutFocusReason);
        field.item.selectAll();
    }

    spacing: Metrics.gap

    Shortcut {
        enabled: root.rows !== null && root.visible
        sequences: [StandardKey.Find]

        onActivated: root.search()
    }

    RowLayout {
        spacing: Metrics.smallGap

        Subheading {
            Layout.fillWidth: true
            Layout.maximumWidth: implicitWidth + 1
            font.pixelSize: root.small ? Type.body : Type.subheading
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Type.body
            text: root.title
        }

        Badge {
            objectName: "list.counter"
            spoken: true
            text: root.counter
            tint: Colors.cyan
            visible: root.counter !== ""
        }

        Item {
            Layout.fillWidth: true
        }

        SoftIconButton {
            flat: true
            help: L.tr("搜索名称和路径") + " (Ctrl+F)"
            ink: root.searching ? Colors.cyan : Colors.vmSecondaryText
            objectName: "searchButton"
            size: Metrics.rowButton
            symbol: "magnifyingglass"
            visible: root.rows !== null

            onClicked: root.search()
        }

        Loader {
            active: root.rows !== null
            visible: active

            sourceComponent: SortButton {
                rows: root.rows
            }
        }

        RowLayout {
            id: place

            spacing: Metrics.gap
        }
    }

    Loader {
        id: field

        Layout.fillWidth: true
        Layout.leftMargin: -4
        active: root.rows !== null && (root.searching || root.rows.search !== "")
        visible: active

        sourceComponent: SearchField {
            rows: root.rows

            onLeaving: {
                root.searching = false;
                root.searchLeft();
            }
        }
    }
}
