#pragma once

#include "CleanerStore.h"
#include "Desktop.h"
#include "KeyedListModel.h"
#include "done/History.h"

#include <QtQml/qqmlregistration.h>

#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vellmoor {

/// What was cleaned and switched, newest first, with its way back: a row for each clean, followed by its items while it
/// is unfolded, then a row for each switch of a login item.
class HistoryModel final : public vellmoor::KeyedListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")
    /// Cleans and switches.
    Q_PROPERTY(int count READ count NOTIFY historyChanged FINAL)
    /// Why the history cannot be read; usually empty.
    Q_PROPERTY(QString problem READ problem NOTIFY historyChanged FINAL)

public:
    enum Role : std::uint16_t {
        NameRole = Qt::UserRole + 1, ///< "history.0", "history.0.item.1" or "history.switch.0"
        IsItemRole,
        TitleRole,
        DetailRole,
        SizeRole,
        StateRole, ///< what became of it, or what of it can be taken back
        SymbolRole,
        ReturnableRole, ///< something of it can be put back
        UnfinishedRole, ///< it was cut off and can be finished
        ExpandableRole,
        ExpandedRole,
        TickedRole, ///< of an item: it goes back with the others
        FilesRole,
    };

    HistoryModel(CleanerStore& store, Desktop& desktop, QObject* parent = nullptr);
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;
    [[nodiscard]] int count() const;
    [[nodiscard]] QString problem() const;
    /// Texts are in another language now.
    void retranslate() { reload(); }

    Q_INVOKABLE void setExpanded(int row, bool expanded);
    Q_INVOKABLE void toggleExpanded(int row);
    /// The row of the clean that a row belongs to.
    Q_INVOKABLE [[nodiscard]] int headOf(int row) const;
    /// Of an item: whether it goes back with the others.
    Q_INVOKABLE void toggle(int row);
    /// An item; the ticked items of a clean; a switch.
    Q_INVOKABLE void putBack(int row);
    /// The identity of the clean, for questions before it is finished or removed; empty for a switch.
    Q_INVOKABLE [[nodiscard]] QString cleanOf(int row) const;

Q_SIGNALS:
    void historyChanged();

protected:
    [[nodiscard]] std::vector<std::filesystem::path> pathsOf(int row) const override;
    [[nodiscard]] int nameRole() const override { return TitleRole; }

private:
    void reload();
    [[nodiscard]] std::vector<KeyedRow> wantedRows() const;
    [[nodiscard]] const HistoryClean* cleanAt(int row) const;
    [[nodiscard]] std::optional<HistoryItem> itemAt(int row) const;
    [[nodiscard]] const HistorySwitch* switchAt(int row) const;
    [[nodiscard]] QVariant cleanData(const KeyedRow& row, const HistoryClean& clean, int role) const;
    [[nodiscard]] QVariant partData(const KeyedRow& row, const HistoryItem& item, int role) const;
    [[nodiscard]] QVariant switchData(int number, const HistorySwitch& change, int role) const;
    [[nodiscard]] bool isTicked(const HistoryClean& clean, const HistoryItem& item) const;

    CleanerStore& store_;
    std::set<std::string> unfolded_; ///< identities of cleans
    std::set<std::pair<std::string, std::size_t>> unticked_;
};

} // namespace vellmoor
