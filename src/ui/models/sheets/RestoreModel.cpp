#include "RestoreModel.h"

#include "QtText.h"

#include <algorithm>

namespace vellmoor {

RestoreModel::RestoreModel(CleanerStore& store, Desktop& desktop, QObject* parent)
    : KeyedListModel(desktop, parent),
      store_(store) {
    connect(&store_, &CleanerStore::latestRestoreChanged, this, &RestoreModel::read);
}

void RestoreModel::read() {
    const std::optional<RestoreReport>& report = store_.latestRestore();
    if (!report) {
        Q_EMIT changed();
        return;
    }
    message_ = report->message();
    stayed_.clear();
    std::ranges::copy_if(report->outcomes, std::back_inserter(stayed_), [](const RestoreOutcome& outcome) {
        return outcome.fate != RestoreFate::Restored && outcome.fate != RestoreFate::Untried;
    });
    std::vector<KeyedRow> fresh;
    for (std::size_t record = 0; record < stayed_.size(); ++record) {
        fresh.push_back({.key = std::to_string(record), .record = static_cast<int>(record)});
    }
    setRows(fresh);
    Q_EMIT changed();
    if (!present()) {
        Q_EMIT succeeded(message());
    }
}

bool RestoreModel::present() const {
    return store_.latestRestore() && store_.latestRestore()->failedCount > 0;
}

const RestoreOutcome* RestoreModel::outcomeAt(int row) const {
    const KeyedRow* found = rowAt(row);
    const bool inside = found != nullptr && std::cmp_less(found->record, stayed_.size());
    return inside ? &stayed_[static_cast<std::size_t>(found->record)] : nullptr;
}

QVariant RestoreModel::data(const QModelIndex& index, int role) const {
    const RestoreOutcome* outcome = outcomeAt(index.row());
    if (outcome == nullptr) {
        return {};
    }
    switch (role) {
    case NameRole:
        return toQt(outcome->path.filename().native());
    case ReasonRole:
        return toQt(outcome->reason);
    case TakenRole:
        return outcome->fate == RestoreFate::NameTaken;
    default:
        return {};
    }
}

QHash<int, QByteArray> RestoreModel::roleNames() const {
    return {{NameRole, "name"}, {ReasonRole, "reason"}, {TakenRole, "taken"}};
}

void RestoreModel::showBoth(int row) const {
    if (const RestoreOutcome* outcome = outcomeAt(row)) {
        desktop().reveal(outcome->place);
        desktop().reveal(outcome->path);
    }
}

std::vector<std::filesystem::path> RestoreModel::pathsOf(int row) const {
    const RestoreOutcome* outcome = outcomeAt(row);
    return outcome == nullptr ? std::vector<std::filesystem::path>() : std::vector{outcome->place};
}

} // namespace vellmoor
