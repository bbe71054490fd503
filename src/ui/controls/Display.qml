import QtQuick
import Vellmoor.Theme

Text {
    // Whether a screen reader meets this heading by itself.
    property bool spoken: true

    Accessible.ignored: !spoken
    Accessible.name: text
    Accessible.role: Accessible.Heading
    color: Colors.vmText
    elide: Text.ElideRight
    font.family: Type.family
    font.letterSpacing: -0.4
    font.pixelSize: Type.display
    font.weight: Font.DemiBold
    textFormat: Text.PlainText
}
