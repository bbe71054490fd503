import QtQuick
import Vellmoor.Theme

Text {
    color: Colors.vmSecondaryText
    elide: Text.ElideRight
    font.family: Type.family
    font.pixelSize: Type.caption
    font.weight: Font.Normal
    textFormat: Text.PlainText
}
