import QtQuick
import Vellmoor.Theme

// Scrolls a view along when the keyboard moves to something in it that is out of sight.
Item {
    id: root

    required property Flickable view
    readonly property Item focused: Window.activeFocusItem
    property bool waiting: false

    function isInView(item: Item): bool {
        for (let at = item; at; at = at.parent) {
            if (at === view.contentItem)
                return true;
        }
        return false;
    }

    function show(item: Item): void {
        const place = item.mapToItem(view.contentItem, 0, 0, item.width, item.height);
        const last = view.originY + Math.max(0, view.contentHeight - view.height);
        const lowest = Math.min(last, place.y - Metrics.panelGap);
        const highest = Math.max(view.originY, place.y + place.height + Metrics.panelGap - view.height);
        // What lies out of sight in a list of its own may be beyond all that this view has.
        view.contentY = Math.max(view.originY, Math.min(last, Math.max(highest, Math.min(lowest, view.contentY))));
    }

    // A view that has no place yet would scroll by the whole item.
    function follow(): void {
        const inView = isInView(focused);
        waiting = inView && view.height < focused.height + Metrics.panelGap;
        if (inView && !waiting)
            show(focused);
    }

    onFocusedChanged: follow()

    Connections {
        function onHeightChanged(): void {
            if (root.waiting)
                root.follow();
        }

        target: root.view
    }
}
