#pragma once

#include "Desktop.h"
#include "RowKey.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include <filesystem>
#include <vector>

namespace vellmoor {

/// A row's identity, which it keeps whatever comes before it, and where its record stands.
struct KeyedRow {
    RowKey key;
    int record = 0; ///< -1: it is gone from the records and about to leave the list
    int part = -1;  ///< of the record; -1: the record itself
};

/// A list whose rows have identities. It tells its views which rows came, went and moved, so that they keep their
/// place, their focus and what is unfolded; it never resets.
class KeyedListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("a base")

public:
    explicit KeyedListModel(Desktop& desktop, QObject* parent = nullptr)
        : QAbstractListModel(parent),
          desktop_(desktop) {}
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    /// The next row after `after`, round the end, whose name begins with `prefix`; -1: none.
    Q_INVOKABLE [[nodiscard]] int rowStartingWith(const QString& prefix, int after) const;
    /// Shows the row's path in the file manager; the first one of several.
    Q_INVOKABLE void reveal(int row) const;
    /// Opens the folder that holds it.
    Q_INVOKABLE void openFolder(int row) const;
    /// Puts the row's paths on the clipboard, a line each.
    Q_INVOKABLE void copyPath(int row) const;

protected:
    [[nodiscard]] Desktop& desktop() const { return desktop_; }
    /// Files and folders that the row stands for.
    [[nodiscard]] virtual std::vector<std::filesystem::path> pathsOf(int /*row*/) const { return {}; }
    /// The role of a row's name.
    [[nodiscard]] virtual int nameRole() const = 0;
    [[nodiscard]] const std::vector<KeyedRow>& rows() const { return rows_; }
    /// Null outside, and for a row whose record is gone.
    [[nodiscard]] const KeyedRow* rowAt(int row) const;
    /// The rows as they are now; no two keys may be the same. Every row is told to have changed.
    void setRows(const std::vector<KeyedRow>& fresh);

private:
    /// Where the new rows are, and which of them the list has had.
    struct Places {
        const std::vector<KeyedRow>& fresh;
        RowKeys keys;
        std::vector<bool> kept;
        std::size_t keptCount = 0;
    };
    void findRecords(Places& places);
    void dropGoneRows();
    void orderAs(const Places& places);
    void moveUp(const RowKey& key, std::size_t to);

    Desktop& desktop_;
    std::vector<KeyedRow> rows_;
};

} // namespace vellmoor
