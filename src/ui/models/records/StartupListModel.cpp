#include "StartupListModel.h"

#include "ApplicationIconProvider.h"
#include "QtText.h"
#include "disk/Paths.h"

#include <algorithm>

namespace vellmoor {

StartupListModel::StartupListModel(CleanerStore& store, Desktop& desktop, QObject* parent)
    : RecordListModel(store, desktop, parent) {
    connect(&store, &CleanerStore::startupItemsChanged, this, &StartupListModel::reload);
    reload();
}

int StartupListModel::enabledCount() const {
    return static_cast<int>(std::ranges::count_if(store().startupItems(), &StartupItem::isEnabled));
}

int StartupListModel::recordCount() const {
    return static_cast<int>(store().startupItems().size());
}

/// A switch moves the file into another folder; the item stays the same.
std::string StartupListModel::keyOf(int record) const {
    return store().startupItems().at(static_cast<std::size_t>(record)).plistURL.filename().native();
}

QVariant StartupListModel::data(const QModelIndex& index, int role) const {
    const StartupItem* item = recordAt(store().startupItems(), rowAt(index.row()));
    if (item == nullptr) {
        return {};
    }
    switch (role) {
    case NameRole:
        return toQt(item->name);
    case LocationRole:
        return toQt(displayPath(item->program ? std::filesystem::path(*item->program) : item->plistURL,
                                desktop().homeFolder()));
    case EnabledRole:
        return item->isEnabled;
    case KindRole:
        return item->startsAtLogin ? localised("登录启动") : localised("后台代理");
    case IconRole:
        return item->appURL ? applicationIconSource(desktop(), *item->appURL) : QString();
    default:
        return {};
    }
}

QHash<int, QByteArray> StartupListModel::roleNames() const {
    return {{NameRole, "name"},
            {LocationRole, "location"},
            {EnabledRole, "startsEnabled"},
            {KindRole, "kind"},
            {IconRole, "icon"}};
}

std::vector<std::filesystem::path> StartupListModel::pathsOf(int row) const {
    const StartupItem* item = recordAt(store().startupItems(), rowAt(row));
    return item == nullptr ? std::vector<std::filesystem::path>() : std::vector{item->plistURL};
}

} // namespace vellmoor
