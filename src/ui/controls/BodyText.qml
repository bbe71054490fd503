import QtQuick
import Vellmoor.Theme

Text {
    color: Colors.vmText
    elide: Text.ElideRight
    font.family: Type.family
    font.pixelSize: Type.body
    font.weight: Font.Normal
    textFormat: Text.PlainText
}
