import QtQuick
import Vellmoor.Appearance
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// Light, dark, or as the desktop has it; a press goes on to the next.
SecondaryButton {
    id: root

    property bool wordless: false
    readonly property var choices: ["system", "light", "dark"]
    readonly property var symbols: ["circle.lefthalf.filled", "sun.max", "moon"]
    readonly property var titles: [L.tr("跟随系统"), L.tr("浅色"), L.tr("深色")]
    readonly property int current: choices.indexOf(Appearance.choice)

    Accessible.name: L.tr1("外观：%@", titles[current])
    compact: true
    objectName: "themeSwitch"
    symbol: symbols[current]
    text: wordless ? "" : titles[current]

    onClicked: Appearance.choice = choices[(current + 1) % choices.length]

    HelpTip {
        shown: root.hovered
        text: root.Accessible.name
    }
}
