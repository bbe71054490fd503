import QtQuick
import QtQuick.Templates as T
import Vellmoor.Controls
import Vellmoor.Theme

// The menu under the right mouse button.
T.Menu {
    id: root

    // Where the keyboard was.
    property Item before: null

    cascade: false
    implicitHeight: contentHeight + 8
    implicitWidth: Metrics.grown(196)
    margins: 4
    overlap: 1
    padding: 4

    onAboutToShow: before = parent ? parent.Window.activeFocusItem : null
    // Qt gives the keyboard back itself, unless the command took its own item out of use. What it opened keeps it.
    onClosed: {
        const covered = T.Overlay.overlay !== null && T.Overlay.overlay.visible;
        if (before && before.visible && before.enabled && !before.activeFocus && !covered)
            before.forceActiveFocus(Qt.PopupFocusReason);
        before = null;
    }

    background: GlassPanel {
        color: Colors.popup
        radius: Metrics.rowRadius
        reach: 14
    }
    // The item that Qt makes for a popup bears the role of a menu, but no name.
    Binding {
        property: "name"
        target: root.contentItem.parent ? root.contentItem.parent.Accessible : null
        value: root.title
    }

    contentItem: ListView {
        implicitHeight: contentHeight
        interactive: false
        model: root.contentModel
    }
}
