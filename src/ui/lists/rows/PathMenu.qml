import QtQuick
import Vellmoor.Controls
import Vellmoor.Models

// What can be done with the paths of a row; a row without any has none of it.
ContextMenu {
    id: root

    required property KeyedListModel paths
    required property int place
    // Begins the object names of its commands.
    required property string owner
    property bool files: true

    ContextMenuItem {
        objectName: root.owner + ".menu.reveal"
        text: L.tr("在 Finder 中显示")
        visible: root.files

        onTriggered: root.paths.reveal(root.place)
    }

    ContextMenuItem {
        objectName: root.owner + ".menu.openFolder"
        text: L.tr("打开所在文件夹")
        visible: root.files

        onTriggered: root.paths.openFolder(root.place)
    }

    ContextMenuItem {
        objectName: root.owner + ".menu.copyPath"
        text: L.tr("复制路径")
        visible: root.files

        onTriggered: root.paths.copyPath(root.place)
    }
}
