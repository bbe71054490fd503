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
    // It stands for files that can be shown.
    required property bool files
    // Of a path in a Trash: it can be put back.
    required property bool returnable
    // Where a list has the keyboard, its keys do what the row's buttons do, and the buttons are passed over.
    property bool hasKeys: true
    // Gone from its list, and only fading.
    property bool leaving: false
    // As a Qt::CheckState; -1: it cannot be ticked.
    readonly property int tick: !cleanable ? -1 : !ticked ? Qt.Unchecked : partial ? Qt.PartiallyChecked : Qt.Checked
    readonly property int focusPolicy: hasKeys ? Qt.StrongFocus : Qt.ClickFocus
}
