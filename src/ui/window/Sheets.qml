import QtQuick
import Vellmoor.Controls
import Vellmoor.Models

// The window's modal surfaces. Each is loaded when it is asked for; only one of each kind is open at a time.
Item {
    id: root

    required property WindowModel vm

    // The paths of a clean; with a button that goes on to it, when it was asked for.
    function showDetails(cleans: bool): void {
        open(details, "Pages/sheets/CleanupDetailSheet.qml", {
                "cleans": cleans
            });
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

    function showShortcuts(): void {
        open(help, "ShortcutsSheet.qml", {});
    }

    function showAbout(): void {
        open(help, "AboutSheet.qml", {});
    }

    function showOverview(): void {
        open(help, "OverviewSheet.qml", {});
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
        id: help
    }

    Loader {
        id: result
    }

    Connections {
        function onCleanAsked(): void {
            root.askClean();
        }

        ignoreUnknownSignals: true
        target: details.item
    }

    // What was confirmed over the list of paths needs it no longer.
    Connections {
        function onAccepted(): void {
            (details.item as Sheet)?.close();
        }

        target: confirmation.item
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
