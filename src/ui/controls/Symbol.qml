import QtQuick
import Vellmoor.Theme

// A symbol by its name, in one colour; it grows with the text.
Image {
    property string name
    property color color: Colors.vmText
    property int size: 16
    readonly property int drawn: Metrics.grown(size)

    height: drawn
    source: name === "" ? "" : "image://symbol/" + name + "?" + color
    sourceSize.height: drawn
    sourceSize.width: drawn
    width: drawn
}
