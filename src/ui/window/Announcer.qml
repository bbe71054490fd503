// qmllint disable unqualified
import QtQuick
import Vellmoor.Controls
import Vellmoor.Models

// Tells screen readers what others see. Where Qt cannot, an object appears with the role of a notification, which
// readers read out when it comes; they look at it a moment later, so that each text has an object of its own for a while.
Item {
    id: root

    required property WindowModel source
    property int turn: 0

    component Voice: Item {
        id: voice

        property string text

        function say(what: string): void {
            visible = false;
            text = what;
            visible = true;
            readOut.restart();
        }

        Accessible.name: text
        Accessible.role: Accessible.Notification
        height: 1
        visible: false
        width: 1

        // It was read out; what stays would be found by those who look around.
        Timer {
            id: readOut

            interval: 4000

            onTriggered: voice.visible = false
        }
    }

    function say(what: string, urgent: bool): void {
        if (what === "" || root.Spoken.announce(what, urgent))
            return;
        (voices.itemAt(turn) as Voice).say(what);
        turn = (turn + 1) % voices.count;
    }

    Repeater {
        id: voices

        model: 8

        Voice {
            required property int index

            objectName: "announcer." + index
        }
    }

    Connections {
        function onRevisionChanged(): void {
            for (let index = 0; index < voices.count; ++index)
                voices.itemAt(index).visible = false;
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
