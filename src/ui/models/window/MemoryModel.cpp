#include "MemoryModel.h"

#include "QtText.h"
#include "texts/ByteCount.h"

namespace vellmoor {
namespace {

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
    return known() ? percentText(usage()) : QString(unknown);
}

QString MemoryModel::pressure() const {
    return known() ? toQt(snapshot().pressureTitle()) : QString();
}

QString MemoryModel::pressureTint() const {
    switch (snapshot().pressure()) {
    case MemoryPressure::good:
        break;
    case MemoryPressure::high:
        return QStringLiteral("orange");
    case MemoryPressure::critical:
        return QStringLiteral("red");
    }
    return QStringLiteral("green");
}

} // namespace vellmoor
