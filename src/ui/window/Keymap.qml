// qmllint disable unqualified
import QtQml
import QtQuick
import Vellmoor.Models

// The keys of the whole window.
Item {
    id: root

    required property WindowModel vm

    signal aboutAsked
    signal shortcutsAsked

    Shortcut {
        sequences: ["Ctrl+R", "F5"]

        onActivated: root.vm.refresh()
    }

    Shortcut {
        sequences: ["Ctrl+Q"]

        onActivated: Qt.quit()
    }

    Shortcut {
        sequences: [StandardKey.Close]

        onActivated: root.Window.window.close()
    }

    Shortcut {
        sequences: [StandardKey.HelpContents]

        onActivated: root.shortcutsAsked()
    }

    Instantiator {
        model: root.vm.modules

        Shortcut {
            required property int index
            required property string module

            sequences: ["Ctrl+" + (index + 1)]

            onActivated: root.vm.module = module
        }
    }
}
