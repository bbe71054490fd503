#include "ReportModel.h"

#include "ByteCount.h"
#include "QtText.h"

namespace vellmoor {

namespace {

QStringList linesOf(const std::vector<std::string>& texts) {
    QStringList lines;
    for (const std::string& text : texts) {
        lines << toQt(text);
    }
    return lines;
}

} // namespace

ReportModel::ReportModel(CleanerStore& store, QObject* parent) : QObject(parent), store_(store) {
    connect(&store_, &CleanerStore::latestReportChanged, this, [this] {
        if (store_.latestReport()) {
            shown_ = *store_.latestReport();
        }
        Q_EMIT changed();
    });
}

QString ReportModel::title() const {
    if (memory()) {
        if (!failed()) {
            return localised("内存优化完成");
        }
        return nothingDone() ? localised("内存优化失败") : localised("内存优化已完成，部分失败");
    }
    return failed() ? localised("清理已完成，部分项目失败") : localised("清理完成");
}

QString ReportModel::subtitle() const {
    if (memory()) {
        return failed() ? localised("未能完成内存释放，可查看失败原因后重试。")
                        : localised("已请求 macOS 释放预计可释放的文件缓存。");
    }
    return failed() ? localised("部分路径未能处理，可查看失败原因后重试。") : localised("选中项目已处理完成。");
}

QString ReportModel::freed() const {
    return toQt(byteCountText(report().processedBytes));
}

QString ReportModel::processed() const {
    return countText("%d 项", "1 项", report().removedCount);
}

QString ReportModel::failures() const {
    return countText("%d 项", "1 项", report().failedCount);
}

QString ReportModel::share() const {
    if (!memory()) {
        return localised("%d/%d 个路径", groupedText(report().removedCount).toStdString(),
                         groupedText(report().attemptedCount).toStdString());
    }
    if (!report().memoryBefore || !report().memoryAfter) {
        return QStringLiteral("--");
    }
    return QStringLiteral("%1% → %2%")
        .arg(report().memoryBefore->usagePercent())
        .arg(report().memoryAfter->usagePercent());
}

QString ReportModel::caches() const {
    const std::int64_t before = report().memoryBefore ? report().memoryBefore->fileCacheBytes() : 0;
    const std::int64_t after = report().memoryAfter ? report().memoryAfter->fileCacheBytes() : 0;
    return memory() && before > 0 ? localised("文件缓存 %@ → %@", byteCountText(before), byteCountText(after))
                                  : QString();
}

QStringList ReportModel::failureLines() const {
    return linesOf(report().failures);
}

QStringList ReportModel::noteLines() const {
    return linesOf(report().notes);
}

} // namespace vellmoor
