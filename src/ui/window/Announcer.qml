import QtQuick
import Vellmoor.Models

// Tells screen readers what others see: an object with the role of an alert, which they read out when it appears.
Item {
    id: root

    required property ScanModel source
    property string text

    function say(what: string): void {
        if (what === "")
            return;
        visible = false;
        text = what;
        visible = true;
        readOut.restart();
    }

    Accessible.name: text
    Accessible.role: Accessible.AlertMessage
    height: 1
    objectName: "announcer"
    visible: false
    width: 1

    // It was read out; what stays would be found by those who look around.
    Timer {
        id: readOut

        interval: 4000

        onTriggered: root.visible = false
    }

    Connections {
        function onRevisionChanged(): void {
            root.visible = false;
        }

        target: Texts
    }

    Connections {
        function onAnnounced(text: string): void {
            root.say(text);
        }

        target: root.source
    }
}
