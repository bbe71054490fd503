pragma Singleton
import QtQuick

// Sizes in steps of 4, in device-independent pixels.
QtObject {
    readonly property int sidebarWidth: 240
    readonly property int secondaryWidth: 330

    readonly property int panelGap: 18
    readonly property int panelPadding: 16
    readonly property int panelRadius: 18
    readonly property int rowRadius: 12
    readonly property int smallRadius: 8

    readonly property int gap: 8
    readonly property int topBarHeight: 62
    readonly property int dashboardHeight: 164
    readonly property int moduleHeaderHeight: 124
    readonly property int bottomBarHeight: 66
    readonly property int sidebarRow: 60

    readonly property int smallGap: 4
    readonly property int wideGap: 12

    readonly property int button: 38
    readonly property int iconButton: 32
    readonly property int rowButton: 28
    readonly property int tile: 38
    readonly property int smallTile: 28
    readonly property int tickBox: 20
    readonly property int focusWidth: 2
}
