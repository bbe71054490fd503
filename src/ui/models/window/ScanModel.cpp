#include "ScanModel.h"

#include "ModuleLook.h"
#include "QtText.h"
#include "texts/ByteCount.h"

#include <QMetaObject>
#include <QStringList>

#include <algorithm>

namespace vellmoor {

ScanModel::ScanModel(CleanerStore& store, QObject* parent) : QObject(parent), store_(store) {
    const auto notify = [this](auto signal) { connect(&store_, signal, this, &ScanModel::changed); };
    connect(&store_, &CleanerStore::isScanningChanged, this, [this] {
        Q_EMIT changed();
        announceStartOrEnd();
    });
    connect(&store_, &CleanerStore::scanProgressChanged, this, &ScanModel::announceQuarter);
    notify(&CleanerStore::isCleaningChanged);
    notify(&CleanerStore::cleanProgressChanged);
    connect(&store_, &CleanerStore::cleanProgressChanged, this, &ScanModel::announceQuarter);
    connect(&store_, &CleanerStore::isCleaningChanged, this, [this] { announcedQuarters_ = 0; });
    notify(&CleanerStore::scanProgressChanged);
    notify(&CleanerStore::scanStageChanged);
    notify(&CleanerStore::statusMessageChanged);
    notify(&CleanerStore::lastScanLabelChanged);
    notify(&CleanerStore::cleanupItemsChanged);
    notify(&CleanerStore::diskSummaryChanged);
    notify(&CleanerStore::countsChanged);
}

void ScanModel::setModule(CleanerModule module) {
    module_ = module;
    Q_EMIT changed();
}

void ScanModel::announceStartOrEnd() {
    announcedQuarters_ = 0;
    if (scanning()) {
        Q_EMIT announced(title());
        return;
    }
    // The message of the end is set together with it, and told after it.
    QMetaObject::invokeMethod(this, [this] { Q_EMIT announced(status()); }, Qt::QueuedConnection);
}

void ScanModel::announceQuarter() {
    const int quarters = static_cast<int>(workProgress() * 4);
    if (working() && quarters > announcedQuarters_ && quarters < 4) {
        announcedQuarters_ = quarters;
        Q_EMIT announced(title() + QLatin1Char(' ') + progressText());
    }
}

QString ScanModel::progressText() const {
    return percentText(workProgress());
}

double ScanModel::workProgress() const {
    if (!tellsClean()) {
        return progress();
    }
    const CleanProgress& done = *store_.cleanProgress();
    if (done.totalBytes > 0) {
        return std::clamp(static_cast<double>(done.doneBytes) / static_cast<double>(done.totalBytes), 0.0, 1.0);
    }
    return done.totalCount > 0 ? static_cast<double>(done.doneCount) / static_cast<double>(done.totalCount) : 0;
}

QString ScanModel::cleanText() const {
    const CleanProgress& done = *store_.cleanProgress();
    return localised("已处理 %d/%d 项，%@/%@", groupedText(done.doneCount).toStdString(),
                     groupedText(done.totalCount).toStdString(), byteCountText(done.doneBytes),
                     byteCountText(done.totalBytes));
}

QString ScanModel::current() const {
    return tellsClean() ? toQt(store_.cleanProgress()->current.native()) : QString();
}

QString ScanModel::findings() const {
    if (!scanned() || itemCount() == 0) {
        return {};
    }
    QStringList parts;
    if (module_ == CleanerModule::smartScan) {
        if (const std::int64_t memory = store_.cleanableBytes(CleanerModule::memoryOptimization); memory > 0) {
            parts << localised("其中内存 %@", byteCountText(memory));
        }
    }
    parts << localised("已选择 %@", byteCountText(store_.selectedBytes(module_)));
    return parts.join(QStringLiteral(" · "));
}

QString ScanModel::stage() const {
    return toQt(store_.scanStage());
}

QString ScanModel::status() const {
    if (tellsClean()) {
        return cleanText();
    }
    return toQt(store_.statusMessage());
}

QString ScanModel::lastScan() const {
    return toQt(store_.lastScanLabel());
}

QString ScanModel::title() const {
    if (tellsClean()) {
        return cleaningTitle(module_);
    }
    if (scanning()) {
        return localised("正在扫描 %@", vellmoor::title(store_.scannedModule()));
    }
    if (!scanned()) {
        return module_ == CleanerModule::smartScan ? localised("准备好后开始扫描你的 Mac")
                                                   : localised("尚未扫描此模块");
    }
    const std::int64_t cleanable = store_.cleanableBytes(module_);
    if (cleanable == 0 && module_ == CleanerModule::performance && !store_.startupItems().empty()) {
        return countText("%d 个启动项", "1 个启动项", static_cast<std::int64_t>(store_.startupItems().size()));
    }
    return itemCount() == 0 ? localised("未发现可处理项目")
                            : localised("发现 %@ 可安全处理项目", byteCountText(cleanable));
}

QString ScanModel::headline() const {
    return moduleHeadline(module_);
}

QString ScanModel::description() const {
    return moduleDescription(module_);
}

QString ScanModel::ringNumber() const {
    const bool hasFigure = !tellsClean() && scanned() && !scanning() && itemCount() > 0;
    return hasFigure ? toQt(byteCountParts(store_.cleanableBytes(module_)).number) : QString();
}

QString ScanModel::ringUnit() const {
    if (tellsClean()) {
        return cleaningTitle(module_);
    }
    if (scanning()) {
        return localised("扫描中");
    }
    if (!scanned()) {
        return localised("等待扫描");
    }
    if (itemCount() == 0) {
        return localised("无需清理");
    }
    const ByteCountParts size = byteCountParts(store_.cleanableBytes(module_));
    return size.unit == "GB" ? localised("GB 可清理") : localised("%@ 可清理", size.unit);
}

int ScanModel::itemCount() const {
    return store_.ticks(module_).rows;
}

QString ScanModel::cleanable() const {
    return toQt(byteCountText(store_.cleanableBytes(module_)));
}

QString ScanModel::diskSummary() const {
    return toQt(store_.diskSummary());
}

} // namespace vellmoor
