#include "PermissionListModel.h"

#include "QtText.h"

namespace vellmoor {

PermissionListModel::PermissionListModel(CleanerStore& store, Desktop& desktop, QObject* parent)
    : RecordListModel(store, desktop, parent) {
    connect(&store, &CleanerStore::permissionHintsChanged, this, &PermissionListModel::reload);
    reload();
}

int PermissionListModel::recordCount() const {
    return static_cast<int>(store().permissionHints().size());
}

std::string PermissionListModel::keyOf(int record) const {
    return store().permissionHints().at(static_cast<std::size_t>(record)).title;
}

QVariant PermissionListModel::data(const QModelIndex& index, int role) const {
    const PermissionHint* hint = recordAt(store().permissionHints(), rowAt(index.row()));
    if (hint == nullptr) {
        return {};
    }
    switch (role) {
    case TitleRole:
        return toQt(hint->title);
    case SubtitleRole:
        return toQt(hint->description);
    case GrantedRole:
        return hint->isGranted;
    case SymbolRole:
        return toQt(hint->symbol);
    case RecommendationRole:
        return toQt(hint->recommendation);
    default:
        return {};
    }
}

QHash<int, QByteArray> PermissionListModel::roleNames() const {
    return {{TitleRole, "title"},
            {SubtitleRole, "subtitle"},
            {GrantedRole, "granted"},
            {SymbolRole, "symbol"},
            {RecommendationRole, "recommendation"}};
}

} // namespace vellmoor
