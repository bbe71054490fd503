#include "RecordListModel.h"

namespace vellmoor {

int RecordListModel::nameRole() const {
    return NameRole;
}

void RecordListModel::reload() {
    std::vector<KeyedRow> fresh;
    DistinctKeys keys(static_cast<std::size_t>(recordCount()));
    for (int record = 0; record < recordCount(); ++record) {
        fresh.push_back({.key = keys.next(keyOf(record)), .record = record});
    }
    setRows(fresh);
    Q_EMIT countChanged();
}

} // namespace vellmoor
