import QtQuick
import Vellmoor.Controls

// A row's menu, made when it is first asked for.
Loader {
    id: root

    property Component menu

    function load(): ContextMenu {
        sourceComponent = menu;
        return item as ContextMenu;
    }

    // Below that row, or where the pointer is.
    function open(row: Item, below: bool): void {
        const loaded = load();
        if (below)
            loaded.popup(row, LayoutMirroring.enabled ? row.width - 40 - loaded.implicitWidth : 40, row.height - 8);
        else
            loaded.popup();
    }
}
