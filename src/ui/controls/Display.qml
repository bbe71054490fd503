import QtQuick
import Vellmoor.Theme

Text {
    color: Colors.vmText
    elide: Text.ElideRight
    font.family: Type.family
    font.letterSpacing: -0.4
    font.pixelSize: Type.display
    font.weight: Font.DemiBold
    textFormat: Text.PlainText
}
