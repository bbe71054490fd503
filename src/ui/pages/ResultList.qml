import QtQuick
import Vellmoor.Models

// The place of a list: the list itself, or that it is empty. A list is loaded when it first has something to show.
Item {
    id: root

    required property CleanupListModel rows
    // The list's file, and its object name.
    required property string list
    property string listName: "cleanupList"
    property bool scanning: false
    // What a screen reader calls the list.
    required property string title
    readonly property bool filled: rows.itemCount > 0

    function fill(): void {
        if (filled && !loader.item)
            loader.setSource(list, {
                    "objectName": listName,
                    "rows": rows
                });
    }

    Component.onCompleted: fill()
    onFilledChanged: fill()

    Loader {
        id: loader

        anchors.fill: parent
        visible: root.filled
    }

    Binding {
        property: "title"
        target: loader.item
        value: root.title
        when: loader.item !== null
    }

    EmptyStateView {
        anchors.centerIn: parent
        anchors.horizontalCenterOffset: -5
        isScanning: root.scanning
        visible: !root.filled
        width: parent.width - 10
    }
}
