import QtQuick
import QtQuick.Layouts
import Vellmoor.Models
import Vellmoor.Theme

// The report's four figures.
RowLayout {
    id: root

    required property ReportModel report

    spacing: Metrics.wideGap

    ResultMetric {
        objectName: "result.freed"
        symbol: "sparkles"
        tint: Colors.green
        title: L.tr("预计释放")
        value: root.report.freed
    }

    ResultMetric {
        objectName: "result.processed"
        symbol: "checkmark.circle.fill"
        tint: Colors.cyan
        title: L.tr("成功处理")
        value: root.report.processed
    }

    ResultMetric {
        objectName: "result.failed"
        symbol: root.report.failed ? "exclamationmark.triangle.fill" : "exclamationmark.shield"
        tint: root.report.failed ? Colors.orange : Colors.gray
        title: L.tr("失败项目")
        value: root.report.failures
    }

    ResultMetric {
        objectName: "result.share"
        symbol: root.report.memory ? "percent" : "list.bullet"
        tint: Colors.indigo
        title: root.report.memory ? L.tr("内存占用") : L.tr("选中路径")
        value: root.report.share
    }
}
