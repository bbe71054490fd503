import QtQuick
import Vellmoor.Theme

// A symbol by its name, in one colour; it grows with the text.
Image {
    property string name
    property color color: Colors.vmText
    property int size: 16
    readonly property int drawn: Metrics.grown(size)

    height: drawn
    // toString(): a colour that becomes a text by itself ends the program when Qt 6.4 collects garbage just then.
    source: name === "" ? "" : "image://symbol/" + name + "?" + color.toString()
    sourceSize.height: drawn
    sourceSize.width: drawn
    width: drawn
}
