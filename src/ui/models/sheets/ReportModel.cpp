#include "ReportModel.h"

#include "QtText.h"
#include "texts/ByteCount.h"

#include <QClipboard>
#include <QGuiApplication>

#include <algorithm>

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
            // Nothing else is told of single paths, and there may be tens of thousands.
            std::erase_if(shown_.outcomes, [](const CleanupOutcome& one) { return one.fate != CleanupFate::Failed; });
            shown_.outcomes.shrink_to_fit();
        }
        Q_EMIT changed();
    });
    connect(&store_, &CleanerStore::historyChanged, this, &ReportModel::changed);
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

QString ReportModel::trashed() const {
    return report().trashedBytes > 0 ? toQt(byteCountText(report().trashedBytes)) : QString();
}

QString ReportModel::removedForGood() const {
    return report().removedBytes > 0 ? toQt(byteCountText(report().removedBytes)) : QString();
}

QString ReportModel::freedNow() const {
    if (!report().freedNow || memory()) {
        return {};
    }
    const QString size = toQt(byteCountText(std::max<std::int64_t>(*report().freedNow, 0)));
    return report().freedNowMayGrow ? size + QLatin1Char(' ') + localised("目前为止") : size;
}

bool ReportModel::hasSums() const {
    return !memory() && (returnable() || !trashed().isEmpty() || !removedForGood().isEmpty() || !freedNow().isEmpty());
}

bool ReportModel::returnable() const {
    const auto& cleans = store_.history().cleans;
    const auto found = std::ranges::find(cleans, report().historyId, &HistoryClean::id);
    return !report().historyId.empty() && found != cleans.end() && found->trashedCount > 0;
}

QStringList ReportModel::failureLines() const {
    QStringList lines;
    for (const CleanupOutcome& outcome : report().outcomes) {
        if (outcome.fate == CleanupFate::Failed) {
            lines << toQt(outcome.path.native()) + QStringLiteral(": ") + toQt(outcome.reason);
        }
    }
    // A report of memory has no paths.
    return lines.isEmpty() ? linesOf(report().failures) : lines;
}

void ReportModel::copyFailures() const {
    QGuiApplication::clipboard()->setText(failureLines().join(QLatin1Char('\n')));
}

QStringList ReportModel::noteLines() const {
    QStringList lines = linesOf(report().notes);
    if (report().wasStopped) {
        lines.prepend(localised("已停止，%d 项未处理", groupedText(report().untriedCount).toStdString()));
    }
    return lines;
}

} // namespace vellmoor
