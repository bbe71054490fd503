import QtQuick
import Vellmoor.Controls
import Vellmoor.Models

// The window's modal surfaces. Each is loaded when it is asked for; only one of each kind is open at a time.
Item {
    id: root

    required property WindowModel vm

    function showDetails(): void {
        open(details, "Pages/sheets/CleanupDetailSheet.qml", {});
    }

    function askClean(): void {
        open(confirmation, "CleanConfirmation.qml", {});
    }

    function askQuit(row: int, name: string): void {
        open(confirmation, "QuitConfirmation.qml", {
                "row": row,
                "name": name
            });
    }

    function askStartup(row: int, name: string, enabled: bool): void {
        open(confirmation, "StartupConfirmation.qml", {
                "row": row,
                "name": name,
                "disables": enabled
            });
    }

    function open(place: Loader, file: string, properties: var): void {
        place.setSource(file, Object.assign({
                    "vm": vm
                }, properties));
        (place.item as Sheet).open();
    }

    Loader {
        id: details
    }

    Loader {
        id: confirmation
    }

    Loader {
        id: result
    }

    Connections {
        function onChanged(): void {
            const sheet = result.item as Sheet;
            if (!root.vm.report.present)
                sheet?.close();
            else if (!sheet?.opened)
                root.open(result, "Pages/sheets/CleanupResultSheet.qml", {});
        }

        target: root.vm.report
    }
}
