import QtQuick
import Vellmoor.Controls
import Vellmoor.Models

// Tells screen readers what others see. Where Qt cannot, an object appears with the role of a notification, which
// readers read out when it comes; they look at it a moment later, so that each text stays for a while.
Item {
    id: root

    required property WindowModel source
    property string text
    property var waiting: []

    function say(what: string, urgent: bool): void {
        if (what === "" || root.Spoken.announce(what, urgent))
            return;
        waiting = urgent ? [what, ...waiting] : [...waiting, what];
        if (!next.running)
            sayNext();
    }

    function sayNext(): void {
        visible = false;
        text = waiting[0] ?? "";
        waiting = waiting.slice(1);
        visible = text !== "";
        if (visible)
            next.restart();
    }

    Accessible.name: text
    Accessible.role: Accessible.Notification
    height: 1
    objectName: "announcer"
    visible: false
    width: 1

    // What was read out and stayed would be found by those who look around.
    Timer {
        id: next

        interval: root.waiting.length > 0 ? 300 : 4000

        onTriggered: root.sayNext()
    }

    Connections {
        function onRevisionChanged(): void {
            root.waiting = [];
            root.visible = false;
        }

        target: Texts
    }

    Connections {
        function onAnnounced(text: string, urgent: bool): void {
            root.say(text, urgent);
        }

        target: root.source
    }
}
