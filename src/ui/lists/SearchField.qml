import QtQuick
import QtQuick.Templates as T
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// Where a list is searched. Escape empties it and gives the keyboard back.
T.TextField {
    id: root

    required property CleanupListModel rows

    signal leaving

    Accessible.name: placeholderText
    Accessible.role: Accessible.EditableText
    Accessible.searchEdit: true
    Keys.onEscapePressed: {
        root.rows.search = "";
        root.leaving();
    }
    color: Colors.vmText
    font.family: Type.family
    font.pixelSize: Type.body
    horizontalAlignment: TextInput.AlignLeft
    implicitHeight: Metrics.rowButton + 4
    leftPadding: 32
    objectName: "searchField"
    placeholderText: L.tr("搜索名称和路径")
    rightPadding: 32
    selectByMouse: true
    selectedTextColor: Colors.onAccent
    selectionColor: Colors.primary
    text: rows.search
    verticalAlignment: TextInput.AlignVCenter

    onTextEdited: rows.search = text

    background: Rectangle {
        border.color: root.activeFocus ? Colors.focus : Colors.edge
        border.width: root.activeFocus ? Metrics.focusWidth : 1
        color: Colors.popup
        radius: height / 2
    }

    Symbol {
        anchors.left: parent.left
        anchors.leftMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        color: Colors.vmSecondaryText
        name: "magnifyingglass"
        size: 14
    }

    BodyText {
        color: Colors.vmSecondaryText
        leftPadding: root.leftPadding
        rightPadding: root.rightPadding
        text: root.placeholderText
        verticalAlignment: Text.AlignVCenter
        visible: root.text === "" && root.preeditText === ""
        height: root.height
        width: root.width
    }

    SoftIconButton {
        anchors.right: parent.right
        anchors.rightMargin: 2
        anchors.verticalCenter: parent.verticalCenter
        flat: true
        help: L.tr("清除搜索")
        objectName: "clearSearch"
        size: Metrics.rowButton
        symbol: "xmark.circle"
        visible: root.text !== ""

        onClicked: {
            root.rows.search = "";
            root.leaving();
        }
    }
}
