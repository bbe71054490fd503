#include "MemoryModel.h"

#include "ByteCount.h"
#include "QtText.h"

namespace vellmoor {
namespace {

// The steps of MemorySnapshot::pressureTitle.
constexpr double highRatio = 0.7;
constexpr double criticalRatio = 0.86;

constexpr QLatin1String unknown("--");

} // namespace

MemoryModel::MemoryModel(CleanerStore& store, QObject* parent) : QObject(parent), store_(store) {
    connect(&store_, &CleanerStore::memorySnapshotChanged, this, &MemoryModel::changed);
}

QString MemoryModel::total() const {
    return localised("总内存 %@", byteCountText(snapshot().totalBytes));
}

QString MemoryModel::used() const {
    return amount(snapshot().usedBytes());
}

QString MemoryModel::available() const {
    return amount(snapshot().freeBytes);
}

QString MemoryModel::reclaimable() const {
    return amount(snapshot().reclaimableBytes);
}

QString MemoryModel::amount(std::int64_t bytes) const {
    return known() ? toQt(byteCountText(bytes)) : QString(unknown);
}

QString MemoryModel::usageText() const {
    return known() ? QStringLiteral("%1%").arg(snapshot().usagePercent()) : QString(unknown);
}

QString MemoryModel::pressure() const {
    return known() ? toQt(snapshot().pressureTitle()) : QString();
}

QString MemoryModel::pressureTint() const {
    const auto total = static_cast<double>(snapshot().totalBytes);
    const double ratio = total < 1 ? 0 : static_cast<double>(snapshot().usedBytes()) / total;
    if (ratio < highRatio) {
        return QStringLiteral("green");
    }
    return ratio < criticalRatio ? QStringLiteral("orange") : QStringLiteral("red");
}

} // namespace vellmoor
