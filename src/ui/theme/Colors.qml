pragma Singleton
import QtQuick
import Vellmoor.Appearance

// Every colour of the window, by what it is for.
QtObject {
    // Text
    readonly property color vmText: Qt.rgba(0.078, 0.098, 0.129, 1)
    readonly property color vmSecondaryText: Qt.rgba(0.37, 0.42, 0.48, 1)
    readonly property color onAccent: "#ffffff"

    // Lines and surfaces
    readonly property color vmLine: Qt.rgba(0, 0, 0, 0.08)
    readonly property color groundStart: Appearance.groundStart
    readonly property color groundMiddle: Appearance.groundMiddle
    readonly property color groundLower: "#faf1f5"
    readonly property color groundEnd: Appearance.groundEnd
    readonly property color sidebar: Qt.rgba(1, 1, 1, 0.46)
    readonly property color glass: Qt.rgba(1, 1, 1, 0.58)
    readonly property color panelGround: "#fdfdfe"
    readonly property color sheet: "#fafcfe"
    readonly property color sheetRow: "#f0f5f9"
    readonly property color popup: "#ffffff"
    readonly property color row: Qt.rgba(1, 1, 1, 0.5)
    readonly property color rowHover: Qt.rgba(1, 1, 1, 0.85)
    readonly property color field: Qt.rgba(0, 0, 0, 0.045)
    readonly property color softButton: Qt.rgba(1, 1, 1, 0.56)
    readonly property color softButtonPressed: Qt.rgba(0, 0, 0, 0.08)
    readonly property color track: Qt.rgba(0, 0, 0, 0.07)
    readonly property color veil: Qt.rgba(0.078, 0.098, 0.129, 0.2)
    readonly property color shadow: Qt.rgba(0.16, 0.24, 0.38, 0.07)
    readonly property color clear: "transparent"

    // The system's named colours
    readonly property color cyan: "#0b93c6"
    readonly property color teal: "#2aa6ad"
    readonly property color mint: "#16b8a6"
    readonly property color green: "#2fb457"
    readonly property color orange: "#f28b1c"
    readonly property color red: "#e5443b"
    readonly property color pink: "#e8477e"
    readonly property color purple: "#9a57d4"
    readonly property color indigo: "#5c5ad6"
    readonly property color blue: "#2b7de9"
    readonly property color gray: "#8a919c"

    readonly property color focus: cyan

    // A colour by the name that the records carry.
    function tint(name: string): color {
        const named = {
            "cyan": cyan,
            "teal": teal,
            "mint": mint,
            "green": green,
            "orange": orange,
            "red": red,
            "pink": pink,
            "purple": purple,
            "indigo": indigo,
            "blue": blue
        };
        return named[name] ?? gray;
    }

    // A tint dark enough to be read as text on light glass.
    function ink(base: color): color {
        return Qt.darker(base, 1.45);
    }

    function faint(base: color, opacity: real): color {
        return Qt.rgba(base.r, base.g, base.b, opacity);
    }

    function risk(name: string): color {
        const named = {
            "safe": green,
            "cautious": orange,
            "high": red
        };
        return named[name] ?? gray;
    }
}
