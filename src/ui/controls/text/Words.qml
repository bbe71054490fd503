import QtQuick
import Vellmoor.Theme

// What every text has; its role (BodyText, Caption, Subheading, Heading, Display) says how large it is and what it is for.
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
    horizontalAlignment: Text.AlignLeft // as the window goes, not as the text does
    textFormat: Text.PlainText
    verticalAlignment: Text.AlignVCenter
}
