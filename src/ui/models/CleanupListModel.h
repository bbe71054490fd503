#pragma once

#include "CleanerStore.h"
#include "Desktop.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include <set>
#include <vector>

namespace vellmoor {

/// The categories of a module as one flat list: each category's row, followed by its paths' rows while it is
/// unfolded. Flat, so that a view of ten thousand paths draws only what is visible.
class CleanupListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")
    /// Categories that pass the filter.
    Q_PROPERTY(int itemCount READ itemCount NOTIFY summaryChanged FINAL)
    /// Ticked ones among them.
    Q_PROPERTY(int selectedCount READ selectedCount NOTIFY summaryChanged FINAL)
    /// The raw value of the CleanupFilter: "all", "recommended" or "selected".
    Q_PROPERTY(QString filter READ filter WRITE setFilter NOTIFY filterChanged FINAL)

public:
    enum Role : std::uint16_t {
        NameRole = Qt::UserRole + 1, ///< "item.0" or "item.0.target.1": stable names for tests and tools
        IsTargetRole,
        TitleRole,
        DetailRole, ///< description of a category, folder of a path
        AmountRole, ///< size of a path; number of files and size of a category
        SizeRole,
        ModifiedRole,
        SymbolRole,
        TintRole,
        RiskRole,
        RiskTitleRole,
        CleanableRole,
        TickedRole,
        PartialRole, ///< ticked, but not with all its paths
        ExpandedRole,
        ExpandableRole,
        LastRole, ///< the last row of the list
        KindRole, ///< of a large file: its kind's title
        KindSymbolRole,
        IconRole, ///< of an application: where its icon is drawn from; empty when there is none
        RunningRole,
        BundleRole,
        LeftoversRole,
    };

    CleanupListModel(CleanerStore& store, Desktop& desktop, QObject* parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    void setModule(CleanerModule module);
    /// Reads the store's array again.
    void rebuild();
    /// Whether categories start unfolded.
    void setInitiallyExpanded(bool expanded) { initiallyExpanded_ = expanded; }
    [[nodiscard]] int itemCount() const { return static_cast<int>(indices_.size()); }
    [[nodiscard]] int selectedCount() const;
    [[nodiscard]] QString filter() const;
    void setFilter(const QString& filter);

    /// Flips the tick of a row; a half-ticked category becomes fully ticked.
    Q_INVOKABLE void toggle(int row);
    Q_INVOKABLE void toggleExpanded(int row);
    /// Unfolds or folds; the row of a path folds its category.
    Q_INVOKABLE void setExpanded(int row, bool expanded);
    /// Ticks or unticks every listed category and nothing else.
    Q_INVOKABLE void setAllSelected(bool selected);
    /// Shows the row's path in the file manager; for a category its first path.
    Q_INVOKABLE void reveal(int row);

Q_SIGNALS:
    void summaryChanged();
    void filterChanged();

protected:
    /// Positions in the store's array of the categories to list.
    [[nodiscard]] virtual std::vector<int> listedItems() const;
    [[nodiscard]] const CleanerStore& store() const { return store_; }
    [[nodiscard]] CleanerModule module() const { return module_; }
    [[nodiscard]] const FileKinds& fileKinds() const { return desktop_.fileKinds(); }

private:
    struct Row {
        int position = 0; ///< in indices_
        int target = -1;  ///< -1: the category itself
    };
    [[nodiscard]] const CleanupItem& itemAt(const Row& row) const;
    [[nodiscard]] const Row* rowAt(int row) const;
    [[nodiscard]] bool isExpanded(const CleanupItem& item) const;
    [[nodiscard]] QVariant categoryData(const Row& row, const CleanupItem& item, int role) const;
    [[nodiscard]] QVariant appData(const CleanupItem& item, int role) const;
    [[nodiscard]] QVariant fileData(const CleanupItem& item, int role) const;
    [[nodiscard]] QVariant targetData(const Row& row, const CleanupItem& item, int role) const;
    [[nodiscard]] int rowOfItem(int position) const;
    void noteSelectionChange(int itemIndex);
    void publishSelectionChanges();

    CleanerStore& store_;
    Desktop& desktop_;
    CleanerModule module_ = CleanerModule::smartScan;
    CleanupFilter filter_ = CleanupFilter::all;
    std::vector<int> indices_;
    std::vector<Row> rows_;
    /// Categories that the user folded or unfolded against the initial state.
    std::set<Uuid> flipped_;
    bool initiallyExpanded_ = false;
    std::set<int> changedItems_; ///< whose ticks changed since the last publication
};

} // namespace vellmoor
