import QtQuick
import Vellmoor
import Vellmoor.Controls
import Vellmoor.Models

// The window's modal surfaces. Each is loaded when it is asked for; only one of each kind is open at a time.
Item {
    id: root

    required property WindowModel vm
    readonly property bool occupied: isOpen(details) || isOpen(confirmation) || isOpen(result)
    readonly property var questionFiles: ({
            "quit": "sheets/QuitConfirmation.qml",
            "end": "sheets/EndConfirmation.qml",
            "disable": "sheets/StartupConfirmation.qml",
            "restore": "sheets/StartupConfirmation.qml"
        })

    // The paths of a clean; with a button that goes on to it, when it was asked for.
    function showDetails(cleans: bool): void {
        open(details, "Pages/sheets/CleanupDetailSheet.qml", {
                "cleans": cleans
            });
    }

    // A clean of files goes over the sheet of its paths.
    function startClean(): void {
        if (root.vm.offer.previewsClean)
            showDetails(true);
        else
            askClean();
    }

    function askClean(): void {
        open(confirmation, "sheets/CleanConfirmation.qml", {});
    }

    function isOpen(place: Loader): bool {
        const sheet = place.item as Sheet;
        return sheet !== null && sheet.visible;
    }

    // A question that comes by itself waits until the user is done with what is open: no button may change under the
    // hand. One that went away takes its dialog with it.
    function showQuestion(): void {
        const question = root.vm.question;
        const shown = confirmation.item as QuestionDialog;
        if (shown?.opened && shown.number !== question.number)
            shown.close();
        else if (question.kind !== "" && !root.occupied)
            open(confirmation, questionFiles[question.kind], {
                    "name": question.name,
                    "number": question.number
                });
    }

    function showShortcuts(): void {
        open(help, "sheets/ShortcutsSheet.qml", {});
    }

    function showAbout(): void {
        open(help, "sheets/AboutSheet.qml", {});
    }

    function showKept(): void {
        open(help, "sheets/KeptSheet.qml", {});
    }

    function showOverview(): void {
        open(help, "sheets/OverviewSheet.qml", {});
    }

    function open(place: Loader, file: string, properties: var): void {
        place.setSource(file, Object.assign({
                    "vm": vm
                }, properties));
        (place.item as Sheet).open();
    }

    // Over whatever is open: the result, or the page.
    function showDecision(): void {
        if (root.vm.decision.kind !== "")
            open(decision, "sheets/DecisionDialog.qml", {});
    }

    function showClosing(): void {
        open(closing, "sheets/CloseConfirmation.qml", {});
    }

    onOccupiedChanged: nextQuestion.restart()

    Binding {
        property: "sheetOpen"
        target: root.vm
        value: root.occupied || root.isOpen(help)
    }

    // From the desktop's menu, and from a row's.
    Connections {
        function onCleanOffered(): void {
            root.startClean();
        }

        function onKeptAsked(): void {
            root.showKept();
        }

        target: root.vm
    }

    // When the sheet that has just closed is out of the way.
    Timer {
        id: nextQuestion

        interval: 0

        onTriggered: root.showQuestion()
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

    Loader {
        id: restore
    }

    Loader {
        id: decision
    }

    Loader {
        id: closing
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
            else if (!root.isOpen(result)) // one that is on its way out stays out
                root.open(result, "Pages/sheets/CleanupResultSheet.qml", {});
        }

        target: root.vm.report
    }

    Connections {
        function onChanged(): void {
            root.showQuestion();
        }

        target: root.vm.question
    }

    Connections {
        function onChanged(): void {
            root.showDecision();
        }

        target: root.vm.decision
    }

    Connections {
        function onChanged(): void {
            if (root.vm.restore.present && !root.isOpen(restore))
                root.open(restore, "sheets/RestoreSheet.qml", {});
        }

        target: root.vm.restore
    }

    Connections {
        function onClosingAsked(): void {
            root.showClosing();
        }

        target: root.vm
    }
}
