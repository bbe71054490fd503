import QtQuick
import Vellmoor.Theme

// How much a removal can hurt.
Badge {
    required property string risk

    readonly property var symbols: ({
            "safe": "checkmark.shield",
            "cautious": "exclamationmark.shield",
            "high": "exclamationmark.triangle",
            "previewOnly": "xmark.shield"
        })

    symbol: symbols[risk] ?? ""
    tint: Colors.risk(risk)
}
