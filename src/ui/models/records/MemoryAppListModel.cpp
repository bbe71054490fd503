#include "MemoryAppListModel.h"

#include "ApplicationIconProvider.h"
#include "QtText.h"
#include "texts/ByteCount.h"

namespace vellmoor {

MemoryAppListModel::MemoryAppListModel(CleanerStore& store, Desktop& desktop, QObject* parent)
    : RecordListModel(store, desktop, parent) {
    connect(&store, &CleanerStore::memoryAppsChanged, this, &MemoryAppListModel::reload);
    reload();
}

int MemoryAppListModel::recordCount() const {
    return static_cast<int>(store().memoryApps().size());
}

std::string MemoryAppListModel::keyOf(int record) const {
    return store().memoryApps().at(static_cast<std::size_t>(record)).id;
}

QVariant MemoryAppListModel::data(const QModelIndex& index, int role) const {
    const MemoryApp* app = recordAt(store().memoryApps(), rowAt(index.row()));
    if (app == nullptr) {
        return {};
    }
    switch (role) {
    case NameRole:
        return toQt(app->name);
    case ProcessesRole:
        return countText("%d 个进程", "1 个进程", app->processCount);
    case MemoryRole:
        return toQt(byteCountText(app->bytes));
    case IconRole:
        return app->path ? applicationIconSource(desktop(), *app->path) : QString();
    default:
        return {};
    }
}

QHash<int, QByteArray> MemoryAppListModel::roleNames() const {
    return {{NameRole, "name"}, {ProcessesRole, "processes"}, {MemoryRole, "memory"}, {IconRole, "icon"}};
}

std::vector<std::filesystem::path> MemoryAppListModel::pathsOf(int row) const {
    const MemoryApp* app = recordAt(store().memoryApps(), rowAt(row));
    return app == nullptr || !app->path ? std::vector<std::filesystem::path>()
                                        : std::vector<std::filesystem::path>{*app->path};
}

} // namespace vellmoor
