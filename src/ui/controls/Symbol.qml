import QtQuick
import Vellmoor.Theme

// A symbol by its name, in one colour.
Image {
    property string name
    property color color: Colors.vmText
    property int size: 16

    height: size
    source: name === "" ? "" : "image://symbol/" + name + "?" + color
    sourceSize.height: size
    sourceSize.width: size
    width: size
}
