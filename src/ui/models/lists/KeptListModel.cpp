#include "KeptListModel.h"

#include "QtText.h"

#include <utility>

namespace vellmoor {

KeptListModel::KeptListModel(CleanerStore& store, Desktop& desktop, QObject* parent)
    : KeyedListModel(desktop, parent),
      store_(store) {
    connect(&store_, &CleanerStore::keptItemsChanged, this, &KeptListModel::reload);
}

void KeptListModel::load() {
    store_.loadKept();
}

void KeptListModel::reload() {
    std::vector<KeyedRow> fresh;
    for (const KeptItem& item : store_.keptItems()) {
        fresh.push_back({.key = item.url.native(), .record = static_cast<int>(fresh.size())});
    }
    setRows(fresh);
    Q_EMIT countChanged();
}

const KeptItem* KeptListModel::keptAt(int row) const {
    const KeyedRow* found = rowAt(row);
    const auto& items = store_.keptItems();
    const bool inside = found != nullptr && std::cmp_less(found->record, items.size());
    return inside ? &items[static_cast<std::size_t>(found->record)] : nullptr;
}

QVariant KeptListModel::data(const QModelIndex& index, int role) const {
    const KeptItem* item = keptAt(index.row());
    if (item == nullptr) {
        return {};
    }
    switch (role) {
    case NameRole:
        return toQt(item->name);
    case LocationRole:
        return item->exists ? toQt(item->location)
                            : toQt(item->location) + QStringLiteral(" · ") + localised("已不存在");
    case SymbolRole:
        return toQt(item->symbol);
    case ExistsRole:
        return item->exists;
    default:
        return {};
    }
}

QHash<int, QByteArray> KeptListModel::roleNames() const {
    return {{NameRole, "name"}, {LocationRole, "location"}, {SymbolRole, "symbol"}, {ExistsRole, "exists"}};
}

void KeptListModel::offerAgain(int row) {
    if (const KeptItem* item = keptAt(row)) {
        store_.offerAgain(item->url);
    }
}

std::vector<std::filesystem::path> KeptListModel::pathsOf(int row) const {
    const KeptItem* item = keptAt(row);
    return item == nullptr || !item->exists ? std::vector<std::filesystem::path>() : std::vector{item->url};
}

} // namespace vellmoor
