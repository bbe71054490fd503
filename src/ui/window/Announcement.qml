import QtQuick

// One text that is read out: it appears with the role of a notification, and goes when it was read.
Item {
    id: root

    required property int index
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
    objectName: "announcer." + index
    visible: false
    width: 1

    // What stays would be found by those who look around.
    Timer {
        id: readOut

        interval: 4000

        onTriggered: root.visible = false
    }
}
