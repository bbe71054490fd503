#pragma once

#include "CleanerStore.h"
#include "Desktop.h"
#include "KeyedListModel.h"
#include "done/KeptItem.h"

#include <QtQml/qqmlregistration.h>

namespace vellmoor {

/// What is never offered again, in the order in which it was added.
class KeptListModel final : public vellmoor::KeyedListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)

public:
    enum Role : std::uint16_t { NameRole = Qt::UserRole + 1, LocationRole, SymbolRole, ExistsRole };

    KeptListModel(CleanerStore& store, Desktop& desktop, QObject* parent = nullptr);
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;
    [[nodiscard]] int count() const { return rowCount(); }
    /// Reads the list again.
    Q_INVOKABLE void load();
    Q_INVOKABLE void offerAgain(int row);

Q_SIGNALS:
    void countChanged();

protected:
    [[nodiscard]] std::vector<std::filesystem::path> pathsOf(int row) const override;
    [[nodiscard]] int nameRole() const override { return NameRole; }

private:
    void reload();
    [[nodiscard]] const KeptItem* keptAt(int row) const;

    CleanerStore& store_;
};

} // namespace vellmoor
