import QtQuick
import Vellmoor.Theme

// The heading of a list or of a panel.
Words {
    Accessible.role: Accessible.Heading
    font.pixelSize: Type.subheading
    font.weight: Font.DemiBold
    spoken: true
}
