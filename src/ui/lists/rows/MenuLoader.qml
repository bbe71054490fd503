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

    function popup(): void {
        load().popup();
    }

    function popupBelow(place: Item): void {
        load().popup(place, 40, place.height - 8);
    }
}
