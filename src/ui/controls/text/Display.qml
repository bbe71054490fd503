import QtQuick
import Vellmoor.Theme

// The name of the page, and the largest figure.
Words {
    Accessible.role: Accessible.Heading
    font.letterSpacing: -0.4
    font.pixelSize: Type.display
    font.weight: Font.DemiBold
    spoken: true
}
