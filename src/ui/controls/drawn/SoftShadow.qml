import QtQuick

// A wide soft shadow, or a glow, around a rounded rectangle that fills its parent.
BorderImage {
    id: root

    required property int radius
    required property int reach
    required property color color

    anchors.fill: parent
    anchors.margins: -(reach + 1)
    border.bottom: radius + reach + 1
    border.left: radius + reach + 1
    border.right: radius + reach + 1
    border.top: radius + reach + 1
    source: "image://shadow/" + radius + "," + reach + "," + color.toString() // see Symbol.qml
}
