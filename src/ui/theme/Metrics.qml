pragma Singleton
import QtQuick
import Vellmoor.Appearance

// Sizes in steps of 4, in device-independent pixels. What holds text grows with it.
QtObject {
    // How much larger than usual what holds text is.
    readonly property real growth: Math.max(1, Appearance.fontScale)

    function grown(size: real): int {
        return Math.round(size * growth);
    }

    readonly property int sidebarWidth: grown(240)
    readonly property int narrowSidebarWidth: 68
    readonly property int secondaryWidth: grown(330)

    // Widths of the window, for text of the usual size, from which the sidebar has words and the second column a place.
    readonly property int wideFrom: 960
    readonly property int columnsFrom: 1040
    // The least height of a page's list; where the window has less, the page scrolls.
    readonly property int leastList: grown(220)

    readonly property int panelGap: 18
    readonly property int tightGap: 12
    readonly property int windowMargin: 14
    readonly property int panelPadding: 16
    readonly property int panelRadius: 18
    readonly property int rowRadius: 12
    readonly property int smallRadius: 8

    readonly property int gap: 8
    readonly property int topBarHeight: 40
    readonly property int dashboardHeight: 164
    readonly property int compactDashboardHeight: 96
    readonly property int moduleHeaderHeight: 124
    readonly property int compactHeaderHeight: 64
    readonly property int bottomBarHeight: 54
    readonly property int sidebarRow: 56
    readonly property int lowSidebarRow: 42
    // A window of less height, for text of the usual size, has no room for explanations.
    readonly property int lowBelow: 640

    readonly property int smallGap: 4
    readonly property int wideGap: 12

    readonly property int button: grown(38)
    readonly property int iconButton: grown(32)
    readonly property int rowButton: grown(28)
    readonly property int tile: 38
    readonly property int smallTile: 28
    readonly property int tickBox: 20
    readonly property int focusWidth: 2
}
