#pragma once

#include "RecordListModel.h"

namespace vellmoor {

/// What starts at login.
class StartupListModel final : public vellmoor::RecordListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")
    Q_PROPERTY(int enabledCount READ enabledCount NOTIFY countChanged FINAL)

public:
    StartupListModel(CleanerStore& store, Desktop& desktop, QObject* parent = nullptr);
    [[nodiscard]] int enabledCount() const;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

protected:
    [[nodiscard]] int recordCount() const override;
    [[nodiscard]] std::string keyOf(int record) const override;
    [[nodiscard]] std::vector<std::filesystem::path> pathsOf(int row) const override;
};

} // namespace vellmoor
