import QtQuick
import Vellmoor.Models

// Shows the view of a file, named from this folder; a file that is never shown is never loaded. No file: nothing.
Loader {
    id: root

    required property WindowModel vm
    required property string file
    property bool ready: false

    function fill(): void {
        if (ready && file !== "")
            setSource(file, {
                    "vm": vm
                });
        else if (ready)
            source = "";
    }

    Component.onCompleted: {
        ready = true;
        fill();
    }
    onFileChanged: fill()
}
