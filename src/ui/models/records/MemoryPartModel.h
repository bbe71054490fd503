#pragma once

#include "RecordListModel.h"

namespace vellmoor {

/// The parts of the memory bar: programs, file caches where the system tells them, and what is free; empty until a scan
/// has read the memory.
class MemoryPartModel final : public vellmoor::RecordListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")

public:
    MemoryPartModel(CleanerStore& store, Desktop& desktop, QObject* parent = nullptr);
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

protected:
    [[nodiscard]] int recordCount() const override;
    [[nodiscard]] std::string keyOf(int record) const override;
};

} // namespace vellmoor
