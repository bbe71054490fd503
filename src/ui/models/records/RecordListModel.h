#pragma once

#include "CleanerStore.h"
#include "Desktop.h"
#include "KeyedListModel.h"

#include <QtQml/qqmlregistration.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vellmoor {

/// A small list that shows one array of the store, whole: one row per record.
/// Lists name their base with its namespace: Qt's type registration looks it up by this very text.
class RecordListModel : public vellmoor::KeyedListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("a base")
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)

public:
    /// The roles of all these lists; each list answers its own ones.
    enum Role : std::uint16_t {
        RawRole = Qt::UserRole + 1,
        TitleRole,
        SubtitleRole,
        SymbolRole,
        ValueRole,
        FractionRole,
        TintRole,
        NameRole,
        LocationRole,
        SizeRole,
        ModifiedRole,
        IconRole,
        EnabledRole,
        KindRole,
        ProcessesRole,
        MemoryRole,
        GrantedRole,
        RecommendationRole,
    };

    RecordListModel(CleanerStore& store, Desktop& desktop, QObject* parent = nullptr)
        : KeyedListModel(desktop, parent),
          store_(store) {}
    [[nodiscard]] int count() const { return rowCount(); }
    /// Reads the array again.
    void reload();

Q_SIGNALS:
    void countChanged();

protected:
    /// Null where there is no record, or no longer.
    template <class Record>
    [[nodiscard]] static const Record* recordAt(const std::vector<Record>& records, const KeyedRow* row) {
        const bool inside = row != nullptr && row->record < static_cast<int>(records.size());
        return inside ? &records[static_cast<std::size_t>(row->record)] : nullptr;
    }

    [[nodiscard]] const CleanerStore& store() const { return store_; }
    [[nodiscard]] int nameRole() const override;
    [[nodiscard]] virtual int recordCount() const = 0;
    /// What the record is, whatever its place; the same key twice is told apart by the base.
    [[nodiscard]] virtual std::string keyOf(int record) const = 0;

private:
    CleanerStore& store_;
};

} // namespace vellmoor
