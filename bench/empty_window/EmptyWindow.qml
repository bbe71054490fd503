import QtQuick

Window {
    height: 720
    title: "Empty"
    visible: true
    width: 1080
}
