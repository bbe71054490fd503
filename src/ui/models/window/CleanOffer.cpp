#include "CleanOffer.h"

#include "ModuleLook.h"
#include "QtText.h"
#include "texts/ByteCount.h"

#include <QTimer>

#include <cstddef>

namespace vellmoor {

CleanOffer::CleanOffer(CleanerStore& store, QObject* parent)
    : QObject(parent),
      store_(store),
      module_(store.activeModule()) {
    connect(&store_, &CleanerStore::selectionChanged, this, &CleanOffer::noteSelectionChange);
    connect(&store_, &CleanerStore::cleanupItemsChanged, this, &CleanOffer::changed);
    connect(&store_, &CleanerStore::isScanningChanged, this, &CleanOffer::changed);
    connect(&store_, &CleanerStore::isCleaningChanged, this, &CleanOffer::changed);
}

void CleanOffer::noteSelectionChange() {
    // Sums over thousands of ticks are told once, not once per tick.
    if (!changePending_) {
        changePending_ = true;
        QTimer::singleShot(0, this, &CleanOffer::tellChange);
    }
}

void CleanOffer::tellChange() {
    changePending_ = false;
    Q_EMIT changed();
}

void CleanOffer::setModule(CleanerModule module) {
    module_ = module;
    Q_EMIT changed();
}

QString CleanOffer::selectedSize() const {
    return toQt(byteCountText(store_.selectedBytes(module_)));
}

QString CleanOffer::selectedText() const {
    return localised("当前选择 %@", byteCountText(store_.selectedBytes(module_)));
}

int CleanOffer::selectedItemCount() const {
    return store_.ticks(module_).selectedRows;
}

QString CleanOffer::selectedPathsText() const {
    const int paths = store_.ticks(module_).selectedPaths;
    const std::string freed = byteCountText(store_.selectedBytes(module_));
    return paths == 1 ? localised("已选择 1 个路径，预计释放 %@", freed)
                      : localised("已选择 %d 个路径，预计释放 %@", groupedText(paths).toStdString(), freed);
}

int CleanOffer::recommendedCount() const {
    return store_.ticks(module_).recommendedRows;
}

bool CleanOffer::canClean() const {
    return !store_.isScanning() && !store_.isCleaning() && selectedItemCount() > 0;
}

QString CleanOffer::cleanTitle() const {
    return module_ == CleanerModule::memoryOptimization ? localised("优化") : localised("清理");
}

QString CleanOffer::cleanBusyTitle() const {
    return cleaningTitle(module_);
}

QString CleanOffer::confirmationTitle() const {
    return module_ == CleanerModule::memoryOptimization ? localised("确认释放内存？") : localised("确认清理选中项目？");
}

QString CleanOffer::confirmationMessage() const {
    if (module_ == CleanerModule::memoryOptimization) {
        return localised("将请求 macOS 释放预计可释放的文件缓存并整理内存压力；系统可能会要求管理员授权。"
                         "当前预计可释放 %@。",
                         byteCountText(store_.cleanableBytes(module_)));
    }
    return localised("普通项目会移到废纸篓；废纸篓中的项目会被永久删除。当前选择 %@。%@",
                     byteCountText(store_.selectedBytes(module_)), riskSummary().toStdString());
}

std::int64_t CleanOffer::selectedBytesOf(CleanerModule part) const {
    return module_ == CleanerModule::smartScan || module_ == part ? store_.selectedBytes(part) : 0;
}

bool CleanOffer::removesForGood() const {
    return selectedBytesOf(CleanerModule::trash) > 0;
}

QStringList CleanOffer::confirmationParts() const {
    if (!previewsClean()) {
        return {}; // the message tells it all
    }
    QStringList parts;
    if (const std::string why = store_.whyNoWayBack(module_); !why.empty()) {
        parts << toQt(why);
    }
    const std::int64_t forGood = selectedBytesOf(CleanerModule::trash);
    const std::int64_t memory = selectedBytesOf(CleanerModule::memoryOptimization);
    const std::int64_t toTrash = store_.selectedBytes(module_) - forGood - memory;
    if (toTrash > 0 && forGood + memory > 0) {
        parts << localised("移到废纸篓：%@", byteCountText(toTrash));
    }
    if (forGood > 0) {
        parts << localised("永久删除，无法恢复：%@", byteCountText(forGood));
    }
    if (memory > 0) {
        parts << localised("释放内存：%@", byteCountText(memory));
    }
    return parts;
}

QString CleanOffer::riskSummary() const {
    const auto& counts = store_.ticks(module_).selectedRowsByRisk;
    QStringList parts;
    for (const CleanupRisk risk : allCleanupRisks) {
        const int count = counts.at(static_cast<std::size_t>(risk));
        if (count > 0) {
            parts << localised("%@ %d 项", title(risk), count);
        }
    }
    return parts.isEmpty() ? QString() : localised("风险级别：%@。", parts.join(localised("，")).toStdString());
}

} // namespace vellmoor
