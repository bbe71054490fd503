import QtQuick
import Vellmoor.Theme

Text {
    // Whether a screen reader meets this text by itself; most texts belong to something that names them.
    property bool spoken: false

    Accessible.ignored: !spoken
    Accessible.name: text
    Accessible.role: Accessible.StaticText
    color: Colors.vmText
    elide: Text.ElideRight
    font.family: Type.family
    font.pixelSize: Type.body
    font.weight: Font.Normal
    textFormat: Text.PlainText
}
