#include "ModuleListModel.h"

#include "ModuleLook.h"
#include "QtText.h"

namespace vellmoor {

ModuleListModel::ModuleListModel(CleanerStore& store, Desktop& desktop, QObject* parent)
    : RecordListModel(store, desktop, parent) {
    reload();
}

int ModuleListModel::recordCount() const {
    return static_cast<int>(allCleanerModules.size());
}

std::string ModuleListModel::keyOf(int record) const {
    return std::string(rawValue(allCleanerModules.at(static_cast<std::size_t>(record))));
}

QVariant ModuleListModel::data(const QModelIndex& index, int role) const {
    if (index.row() < 0 || index.row() >= count()) {
        return {};
    }
    const CleanerModule module = allCleanerModules.at(static_cast<std::size_t>(index.row()));
    switch (role) {
    case RawRole:
        return toQt(rawValue(module));
    case TitleRole:
        return toQt(title(module));
    case SubtitleRole:
        return toQt(subtitle(module));
    case SymbolRole:
        return moduleSymbol(module);
    default:
        return {};
    }
}

QHash<int, QByteArray> ModuleListModel::roleNames() const {
    return {{RawRole, "module"}, {TitleRole, "title"}, {SubtitleRole, "subtitle"}, {SymbolRole, "symbol"}};
}

} // namespace vellmoor
