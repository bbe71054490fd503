pragma Singleton
import QtQuick
import Vellmoor.Appearance

// Every colour of the window, by what it is for: light, dark, and both in high contrast. Text reads at 4.5:1 on every
// surface that it stands on, controls and symbols at 3:1; tests/ui/ContrastTest.cpp holds them to it.
QtObject {
    readonly property bool dark: Appearance.dark
    readonly property bool strong: Appearance.highContrast

    function pick(light: color, dim: color, strongLight: color, strongDark: color): color {
        if (strong)
            return dark ? strongDark : strongLight;
        return dark ? dim : light;
    }

    // Text
    readonly property color vmText: pick("#14191f", "#edf1f6", "#000000", "#ffffff")
    readonly property color vmSecondaryText: pick("#5e6b7a", "#aeb9c6", "#1c2127", "#f0f3f6")
    readonly property color onAccent: pick("#ffffff", "#ffffff", "#ffffff", "#000000")

    // Lines and surfaces
    readonly property color vmLine: pick("#14000000", "#1fffffff", "#b0000000", "#c0ffffff")
    readonly property color groundStart: Appearance.groundStart
    readonly property color groundMiddle: Appearance.groundMiddle
    readonly property color groundLower: pick("#faf1f5", "#191821", "#ffffff", "#000000")
    readonly property color groundEnd: Appearance.groundEnd
    readonly property color sidebar: pick("#75ffffff", "#0affffff", "#ffffff", "#000000")
    readonly property color glass: pick("#94ffffff", "#0fffffff", "#ffffff", "#000000")
    readonly property color panelGround: pick("#fdfdfe", "#1d242d", "#ffffff", "#000000")
    readonly property color sheet: pick("#fafcfe", "#1b232d", "#ffffff", "#000000")
    readonly property color sheetRow: pick("#f0f5f9", "#252e39", "#ffffff", "#000000")
    readonly property color popup: pick("#ffffff", "#28323d", "#ffffff", "#000000")
    readonly property color row: pick("#80ffffff", "#0dffffff", "#ffffff", "#000000")
    readonly property color rowHover: pick("#d9ffffff", "#1cffffff", "#ffffff", "#1c1c1c")
    readonly property color field: pick("#0b000000", "#12ffffff", "#ffffff", "#000000")
    readonly property color softButton: pick("#8fffffff", "#17ffffff", "#ffffff", "#000000")
    readonly property color softButtonPressed: pick("#14000000", "#29ffffff", "#d0d4d8", "#404448")
    readonly property color track: pick("#12000000", "#1fffffff", "#33000000", "#4dffffff")
    readonly property color veil: pick("#3314191f", "#80000000", "#80000000", "#a0000000")
    readonly property color shadow: pick("#12293d61", "#40000000", "#00000000", "#00000000")
    readonly property color clear: "#00000000"
    readonly property color focus: pick("#0b6f97", "#6fd0f5", "#000000", "#ffff00")
    // The edge of a box that can be ticked, and of other fields.
    readonly property color edge: pick("#7b848f", "#8a96a4", "#000000", "#ffffff")

    // What the main buttons are filled with; white reads on them.
    readonly property color primary: pick("#0b7aa6", "#0c7dab", "#00415c", "#8fe0ff")
    readonly property color primaryHover: pick("#096a91", "#0a6f98", "#002f44", "#b8ecff")
    readonly property color danger: pick("#cf372e", "#cf3f37", "#8c0d06", "#ffb3ae")
    readonly property color dangerHover: pick("#b82f27", "#b93630", "#6d0803", "#ffcfcb")

    // The system's named colours
    readonly property color cyan: pick("#0a85b3", "#3fbdea", "#005f85", "#7fdcff")
    readonly property color teal: pick("#228990", "#4cc4cb", "#0b5f66", "#8ceaf0")
    readonly property color mint: pick("#118a80", "#35d6c3", "#006b60", "#7df2e4")
    readonly property color green: pick("#248c47", "#4cd175", "#0a6229", "#86f0a5")
    readonly property color orange: pick("#b96610", "#ffa84a", "#8a4700", "#ffcf96")
    readonly property color red: pick("#de3d34", "#ff7d75", "#a3120a", "#ffb0ab")
    readonly property color pink: pick("#d93d73", "#ff80aa", "#a30d45", "#ffb3cd")
    readonly property color purple: pick("#9450cf", "#c493f5", "#6a1fae", "#dfc2fb")
    readonly property color indigo: pick("#5654d0", "#a3a1fa", "#302db0", "#cbcaff")
    readonly property color blue: pick("#2474de", "#70adff", "#0a4fae", "#a9cdff")
    readonly property color gray: pick("#727a86", "#a3adba", "#3d434b", "#d0d6dd")

    // What turns a tint into its ink.
    readonly property color inkwell: dark ? "#9affffff" : "#660a1220"

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

    // A tint that reads as text, also on its own tile.
    function ink(base: color): color {
        return Qt.tint(base, inkwell);
    }

    // The ground of a symbol, and of a badge.
    function tile(base: color): color {
        return faint(base, dark ? 0.2 : 0.14);
    }

    // The stronger ground of an application's facts.
    function wash(base: color): color {
        return faint(base, 0.3);
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
