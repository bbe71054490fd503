#include "StorageSegmentModel.h"

#include "QtText.h"

#include <algorithm>
#include <array>

namespace vellmoor {
namespace {

struct PlaceholderSegment {
    std::string_view label;
    double fraction;
    Tint tint;
};

// Shown before the first scan has read the disk.
constexpr std::array<PlaceholderSegment, 3> placeholders{
    {{"已使用", 0.72, Tint::cyan}, {"可清理", 0.06, Tint::green}, {"可用", 0.22, Tint::gray}}};

QVariant placeholderData(int row, int role) {
    const PlaceholderSegment& segment = placeholders.at(static_cast<std::size_t>(row));
    switch (role) {
    case RecordListModel::TitleRole:
        return localised(segment.label);
    case RecordListModel::FractionRole:
        return segment.fraction;
    case RecordListModel::TintRole:
        return toQt(tintName(segment.tint));
    default:
        return QString();
    }
}

} // namespace

StorageSegmentModel::StorageSegmentModel(CleanerStore& store, Desktop& desktop, QObject* parent)
    : RecordListModel(store, desktop, parent) {
    connect(&store, &CleanerStore::storageSegmentsChanged, this, &StorageSegmentModel::reload);
    reload();
}

int StorageSegmentModel::recordCount() const {
    const std::size_t read = store().storageSegments().size();
    return static_cast<int>(read == 0 ? placeholders.size() : read);
}

/// The parts keep their places: their widths move from one reading to the next.
std::string StorageSegmentModel::keyOf(int record) const {
    return std::to_string(record);
}

QVariant StorageSegmentModel::data(const QModelIndex& index, int role) const {
    const KeyedRow* row = rowAt(index.row());
    if (row != nullptr && store().storageSegments().empty() && row->record < static_cast<int>(placeholders.size())) {
        return placeholderData(row->record, role);
    }
    const StorageSegment* segment = recordAt(store().storageSegments(), row);
    if (segment == nullptr) {
        return {};
    }
    switch (role) {
    case TitleRole:
        return toQt(segment->label);
    case ValueRole:
        return toQt(segment->value);
    case FractionRole:
        return std::clamp(segment->fraction, 0.0, 1.0);
    case TintRole:
        return toQt(tintName(segment->color));
    default:
        return {};
    }
}

QHash<int, QByteArray> StorageSegmentModel::roleNames() const {
    return {{TitleRole, "title"}, {ValueRole, "value"}, {FractionRole, "fraction"}, {TintRole, "tint"}};
}

} // namespace vellmoor
