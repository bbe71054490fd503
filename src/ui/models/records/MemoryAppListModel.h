#pragma once

#include "RecordListModel.h"

namespace vellmoor {

/// The applications that use the most memory.
class MemoryAppListModel final : public vellmoor::RecordListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")

public:
    MemoryAppListModel(CleanerStore& store, Desktop& desktop, QObject* parent = nullptr);
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

protected:
    [[nodiscard]] int recordCount() const override;
    [[nodiscard]] std::string keyOf(int record) const override;
    [[nodiscard]] std::vector<std::filesystem::path> pathsOf(int row) const override;
};

} // namespace vellmoor
