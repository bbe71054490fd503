import QtQuick
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// Shows a row's path in the file manager.
SoftIconButton {
    required property CleanupRoles row
    required property CleanupListModel rows

    Accessible.name: help + " " + row.title
    flat: true
    focusPolicy: row.focusPolicy
    help: L.tr("在 Finder 中显示")
    ink: Colors.vmSecondaryText
    objectName: row.name + ".reveal"
    size: Metrics.rowButton
    symbol: "magnifyingglass"

    onClicked: rows.reveal(row.index)
}
