#include "FileCandidateModel.h"

#include "QtText.h"

namespace vellmoor {

FileCandidateModel::FileCandidateModel(CleanerStore& store, Desktop& desktop, QObject* parent)
    : RecordListModel(store, desktop, parent) {
    connect(&store, &CleanerStore::fileCandidatesChanged, this, &FileCandidateModel::reload);
    reload();
}

int FileCandidateModel::recordCount() const {
    return static_cast<int>(store().fileCandidates().size());
}

std::string FileCandidateModel::keyOf(int record) const {
    return store().fileCandidates().at(static_cast<std::size_t>(record)).url.native();
}

QVariant FileCandidateModel::data(const QModelIndex& index, int role) const {
    const FileCandidate* file = recordAt(store().fileCandidates(), rowAt(index.row()));
    if (file == nullptr) {
        return {};
    }
    switch (role) {
    case NameRole:
        return toQt(file->name);
    case LocationRole:
        return toQt(file->location);
    case SizeRole:
        return toQt(file->size);
    case ModifiedRole:
        return toQt(file->modified);
    case SymbolRole:
        return toQt(file->symbol);
    default:
        return {};
    }
}

QHash<int, QByteArray> FileCandidateModel::roleNames() const {
    return {{NameRole, "name"},
            {LocationRole, "location"},
            {SizeRole, "size"},
            {ModifiedRole, "modified"},
            {SymbolRole, "symbol"}};
}

std::vector<std::filesystem::path> FileCandidateModel::pathsOf(int row) const {
    const FileCandidate* file = recordAt(store().fileCandidates(), rowAt(row));
    return file == nullptr ? std::vector<std::filesystem::path>() : std::vector{file->url};
}

} // namespace vellmoor
