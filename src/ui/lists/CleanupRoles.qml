import QtQuick

// One row of a CleanupListModel: what its roles say. The row's picture is drawn by the views that take it.
FocusScope {
    required property int index
    required property string name
    required property bool isTarget
    required property string title
    required property string detail
    required property string amount
    required property string size
    required property string modified
    required property string symbol
    required property string tint
    required property string risk
    required property string riskTitle
    required property bool cleanable
    required property bool ticked
    required property bool partial
    required property bool expanded
    required property bool expandable
    required property string kind
    required property string kindSymbol
    required property string icon
    required property bool running
    required property string bundle
    required property string leftovers
    required property string path
    // Where a list has the keyboard, its keys do what the row's buttons do, and the buttons are passed over.
    property bool hasKeys: true
    readonly property int focusPolicy: hasKeys ? Qt.StrongFocus : Qt.ClickFocus
}
