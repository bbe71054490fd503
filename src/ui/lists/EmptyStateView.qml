import QtQuick
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// What a list shows while it is empty.
Column {
    id: root

    required property bool isScanning
    // Inside a small panel.
    property bool small: false

    spacing: small ? Metrics.gap : Metrics.wideGap

    SymbolTile {
        anchors.horizontalCenter: parent.horizontalCenter
        size: root.small ? 44 : 64
        symbol: root.isScanning ? "waveform" : "tray"
        tint: root.isScanning ? Colors.cyan : Colors.gray
    }

    BodyText {
        color: Colors.vmSecondaryText
        horizontalAlignment: Text.AlignHCenter
        objectName: "emptyState"
        spoken: true
        text: root.isScanning ? L.tr("正在读取文件系统...") : L.tr("暂无结果")
        width: root.width
    }
}
