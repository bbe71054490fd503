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
    // There is something, but a filter hides it.
    property bool filtered: false
    property string text: L.tr("暂无结果")

    signal showAll

    spacing: small ? Metrics.gap : Metrics.wideGap

    SymbolTile {
        anchors.horizontalCenter: parent.horizontalCenter
        size: root.small ? 32 : 56
        symbol: root.isScanning ? "waveform" : "tray"
        tint: root.isScanning ? Colors.cyan : Colors.gray
    }

    BodyText {
        color: Colors.vmSecondaryText
        elide: Text.ElideNone
        horizontalAlignment: Text.AlignHCenter
        objectName: "emptyState"
        spoken: true
        text: root.isScanning ? L.tr("正在读取文件系统...") : root.filtered ? L.tr("筛选隐藏了全部项目") : root.text
        width: root.width
        wrapMode: Text.Wrap
    }

    SecondaryButton {
        anchors.horizontalCenter: parent.horizontalCenter
        compact: true
        objectName: "showAll"
        text: L.tr("显示全部")
        visible: root.filtered && !root.isScanning

        onClicked: root.showAll()
    }
}
