import QtQuick
import Vellmoor.Theme

Text {
    color: Colors.vmText
    elide: Text.ElideRight
    font.family: Type.family
    font.letterSpacing: -0.2
    font.pixelSize: Type.heading
    font.weight: Font.DemiBold
    textFormat: Text.PlainText
}
