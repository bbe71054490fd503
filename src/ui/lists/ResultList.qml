import QtQuick
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// The place of a list: the list itself, or that it is empty. A list is loaded when it first has something to show.
FocusScope {
    id: root

    required property CleanupListModel rows
    // The file that draws a category.
    property url category: Qt.resolvedUrl("rows/CleanupRow.qml")
    property string listName: "cleanupList"
    property bool scanning: false
    // What a screen reader calls the list.
    required property string title
    property color ground: Colors.panelGround
    readonly property bool filled: rows.itemCount > 0
    // What all its rows would take.
    readonly property real rowsHeight: filled && view ? view.contentHeight + view.topMargin + view.bottomMargin : 0
    readonly property ListView view: loader.item as ListView

    function fill(): void {
        if (filled && !loader.item)
            loader.setSource(Qt.resolvedUrl("CleanupList.qml"), {
                    "category": category,
                    "objectName": listName,
                    "rows": rows
                });
    }

    Component.onCompleted: fill()
    onFilledChanged: fill()

    Loader {
        id: loader

        anchors.fill: parent
        focus: true
        visible: root.filled
    }

    Binding {
        property: "title"
        target: loader.item
        value: root.title
        when: loader.item !== null
    }

    ScrollFade {
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.rightMargin: 10
        ground: root.ground
        view: root.view
    }

    EmptyStateView {
        anchors.centerIn: parent
        anchors.horizontalCenterOffset: -5
        filtered: root.rows.hidesAll
        isScanning: root.scanning
        visible: !root.filled
        width: parent.width - 10

        onShowAll: root.rows.showAll()
    }
}
