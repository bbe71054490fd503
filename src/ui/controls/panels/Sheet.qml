import QtQuick
import QtQuick.Templates as T
import Vellmoor.Theme

// A modal surface in the middle of the window. Escape closes it; the keyboard then is where it was.
T.Popup {
    id: root

    property string title
    // Where the keyboard was, and whether that was marked.
    property Item before: null
    property bool wasMarked: false

    // What it would like to be; the window may have less.
    property real wantedHeight: implicitHeight
    property real wantedWidth: implicitWidth
    readonly property Item overlay: T.Overlay.overlay
    // Of the window. The last figures stay when it goes: Qt 6.4 does not survive a layout that gets another size then.
    property real roomHeight: 10000
    property real roomWidth: 10000

    anchors.centerIn: overlay
    closePolicy: T.Popup.CloseOnEscape
    dim: true
    focus: true
    height: Math.min(wantedHeight, roomHeight - 24)
    implicitHeight: contentHeight + topPadding + bottomPadding
    implicitWidth: contentWidth + leftPadding + rightPadding
    modal: true
    padding: roomHeight < 600 ? 16 : 24
    width: Math.min(wantedWidth, roomWidth - 24)

    onAboutToShow: {
        before = parent.Window.activeFocusItem;
        const control = before as T.Control;
        wasMarked = control !== null && control.visualFocus;
    }
    onClosed: {
        // What it stood on may be of no use any more, such as the button of a clean that runs: then what is before it.
        const free = before?.visible && !before.enabled ? before.nextItemInFocusChain(false) : before;
        if (free && free.visible && free.enabled)
            free.forceActiveFocus(wasMarked ? Qt.TabFocusReason : Qt.PopupFocusReason);
        before = null;
    }

    T.Overlay.modal: Rectangle {
        color: Colors.veil

        Behavior on opacity  {
            NumberAnimation {
                duration: Motion.quick
            }
        }
    }
    background: GlassPanel {
        color: Colors.sheet
        reach: 40
    }
    enter: Transition {
        NumberAnimation {
            duration: Motion.quick
            from: 0
            property: "opacity"
            to: 1
        }
    }
    Binding {
        property: "roomHeight"
        restoreMode: Binding.RestoreNone
        target: root
        value: root.overlay?.height ?? 0
        when: root.overlay !== null
    }
    Binding {
        property: "roomWidth"
        restoreMode: Binding.RestoreNone
        target: root
        value: root.overlay?.width ?? 0
        when: root.overlay !== null
    }
    // The item that Qt makes for a popup bears the role of a dialog, but no name.
    Binding {
        property: "name"
        target: root.contentItem.parent ? root.contentItem.parent.Accessible : null
        value: root.title
    }

    exit: Transition {
        NumberAnimation {
            duration: Motion.quick
            from: 1
            property: "opacity"
            to: 0
        }
    }
}
