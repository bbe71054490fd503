#include "MemoryPartModel.h"

#include "QtText.h"
#include "texts/ByteCount.h"

#include <algorithm>

namespace vellmoor {
namespace {

struct MemoryPart {
    std::string_view label;
    std::int64_t bytes;
    Tint tint;
};

std::vector<MemoryPart> memoryParts(const MemorySnapshot& memory) {
    if (memory.totalBytes < 1) {
        return {};
    }
    std::vector<MemoryPart> parts{{"程序", memory.usedBytes(), Tint::orange}};
    if (memory.fileCacheBytes() > 0) {
        parts.push_back({"文件缓存", memory.fileCacheBytes(), Tint::mint});
    }
    parts.push_back({"空闲", memory.unusedBytes, Tint::gray});
    return parts;
}

} // namespace

MemoryPartModel::MemoryPartModel(CleanerStore& store, Desktop& desktop, QObject* parent)
    : RecordListModel(store, desktop, parent) {
    connect(&store, &CleanerStore::memorySnapshotChanged, this, &MemoryPartModel::reload);
    reload();
}

int MemoryPartModel::recordCount() const {
    return static_cast<int>(memoryParts(store().memorySnapshot()).size());
}

/// A part keeps its place by its colour: its width moves from one reading to the next.
std::string MemoryPartModel::keyOf(int record) const {
    return std::string(tintName(memoryParts(store().memorySnapshot()).at(static_cast<std::size_t>(record)).tint));
}

QVariant MemoryPartModel::data(const QModelIndex& index, int role) const {
    const std::vector<MemoryPart> parts = memoryParts(store().memorySnapshot());
    const MemoryPart* part = recordAt(parts, rowAt(index.row()));
    if (part == nullptr) {
        return {};
    }
    switch (role) {
    case TitleRole:
        return localised(part->label);
    case ValueRole:
        return toQt(byteCountText(part->bytes));
    case FractionRole: {
        const auto total = static_cast<double>(store().memorySnapshot().totalBytes);
        return std::clamp(static_cast<double>(part->bytes) / total, 0.0, 1.0);
    }
    case TintRole:
        return toQt(tintName(part->tint));
    default:
        return {};
    }
}

QHash<int, QByteArray> MemoryPartModel::roleNames() const {
    return {{TitleRole, "title"}, {ValueRole, "value"}, {FractionRole, "fraction"}, {TintRole, "tint"}};
}

} // namespace vellmoor
