import QtQuick
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// Unfolds and folds a category's paths.
SoftIconButton {
    id: root

    required property CleanupRoles row
    required property CleanupListModel rows

    Accessible.name: L.tr("预览文件") + " " + row.title
    enabled: row.expandable
    flat: true
    focusPolicy: row.focusPolicy
    ink: Colors.vmSecondaryText
    objectName: row.name + ".expand"
    opacity: row.expandable ? 1 : 0
    size: Metrics.rowButton
    symbol: row.expanded ? "chevron.up" : "chevron.down"

    onClicked: rows.toggleExpanded(row.index)
}
