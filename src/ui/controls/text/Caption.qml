import QtQuick
import Vellmoor.Theme

// What is of less weight.
Words {
    color: Colors.vmSecondaryText
    font.pixelSize: Type.caption
}
