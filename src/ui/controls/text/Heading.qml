import QtQuick
import Vellmoor.Theme

// The heading of a page or of a sheet.
Words {
    Accessible.role: Accessible.Heading
    font.letterSpacing: -0.2
    font.pixelSize: Type.heading
    font.weight: Font.DemiBold
    spoken: true
}
