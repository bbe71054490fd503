import QtQuick
import Vellmoor.Controls
import Vellmoor.Models

// A row's menu, loaded when it is first asked for. A row that would have nothing in it has none.
Loader {
    id: root

    required property CleanupRoles row
    required property CleanupListModel rows
    readonly property bool useful: row.files || row.bundle !== ""

    function load(): ContextMenu {
        if (!item)
            setSource(Qt.resolvedUrl("RevealMenu.qml"), {
                    "row": row,
                    "rows": rows
                });
        return item as ContextMenu;
    }

    // Below that item, or where the pointer is.
    function open(place: Item, below: bool): void {
        if (!useful)
            return;
        if (below)
            load().popup(place, 40, place.height - 8);
        else
            load().popup();
    }
}
