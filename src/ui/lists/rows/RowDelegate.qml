// qmllint disable unqualified
import QtQuick
import Vellmoor.Models

// A row of a cleanup list: a category, drawn by the file that the list names, or one of its paths.
CleanupRoles {
    id: root

    required property CleanupListModel rows
    property url category: Qt.resolvedUrl("CleanupRow.qml")
    readonly property url file: isTarget ? Qt.resolvedUrl("CleanupTargetRow.qml") : category
    property bool ready: false

    function fill(): void {
        loader.setSource(file, {
                "row": root,
                "rows": rows
            });
    }

    // A row kept for later use is no row: it takes neither the keyboard nor a screen reader.
    ListView.onPooled: visible = false
    ListView.onRemove: leaving = true
    ListView.onReused: {
        leaving = false;
        visible = true;
        opacity = 1;
    }
    enabled: !leaving
    implicitHeight: loader.height
    objectName: name

    Component.onCompleted: {
        ready = true;
        fill();
    }
    onFileChanged: {
        if (ready)
            fill();
    }

    // The keyboard is on one of the row's own controls: the list goes along.
    onActiveFocusChanged: {
        if (activeFocus && ListView.view)
            ListView.view.currentIndex = index;
    }

    Loader {
        id: loader

        focus: true
        width: root.width
    }

    Connections {
        function onMenuAsked(below: bool): void {
            menu.open(loader.item as Item, below);
        }

        ignoreUnknownSignals: true
        target: loader.item
    }

    RowMenu {
        id: menu

        row: root
        rows: root.rows
    }
}
