#pragma once

#include "CleanerStore.h"
#include "Desktop.h"
#include "KeyedListModel.h"

#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <map>
#include <set>
#include <vector>

namespace vellmoor {

/// Whether a path is one of the user's files: some rows stand for none.
bool standsForFile(const CleanupTarget& target);

/// The categories of a module as one flat list: each category's row, followed by its paths' rows while it is
/// unfolded. Flat, so that a view of ten thousand paths draws only what is visible.
class CleanupListModel : public vellmoor::KeyedListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")
    /// Categories that pass the filter.
    Q_PROPERTY(int itemCount READ itemCount NOTIFY summaryChanged FINAL)
    /// Ticked ones among them.
    Q_PROPERTY(int selectedCount READ selectedCount NOTIFY summaryChanged FINAL)
    /// The raw value of the CleanupFilter: "all", "recommended" or "selected".
    Q_PROPERTY(QString filter READ filter WRITE setFilter NOTIFY filterChanged FINAL)
    /// Only categories whose name, description or paths contain it; empty: all.
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY filterChanged FINAL)
    /// "given", "size", "name" or "date".
    Q_PROPERTY(QString order READ order WRITE setOrder NOTIFY filterChanged FINAL)
    /// There are categories, but filter and search hide them all.
    Q_PROPERTY(bool hidesAll READ hidesAll NOTIFY summaryChanged FINAL)
    /// What is ticked and hidden, such as "755 MB hidden by the filter"; empty when nothing is.
    Q_PROPERTY(QString hiddenSelection READ hiddenSelection NOTIFY summaryChanged FINAL)
    /// Whether anybody looks at the list; while nobody does, it has no rows and costs nothing.
    Q_PROPERTY(bool watched READ isWatched WRITE setWatched NOTIFY watchedChanged FINAL)

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
        PathRole,       ///< of a row that stands for one file or folder; empty otherwise
        FilesRole,      ///< it stands for files that can be shown in the file manager
        ReturnableRole, ///< of a path in a Trash: it is known where it was
    };

    CleanupListModel(CleanerStore& store, Desktop& desktop, QObject* parent = nullptr);

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// Each module has a filter, a search and an order of its own.
    void setModule(CleanerModule module);
    /// Reads the store's array again.
    void rebuild();
    [[nodiscard]] bool isWatched() const { return watched_; }
    void setWatched(bool watched);
    /// Whether categories start unfolded.
    void setInitiallyExpanded(bool expanded) { initiallyExpanded_ = expanded; }
    [[nodiscard]] int itemCount() const { return static_cast<int>(indices_.size()); }
    [[nodiscard]] int selectedCount() const;
    [[nodiscard]] QString filter() const;
    void setFilter(const QString& filter);
    [[nodiscard]] QString search() const { return choice().search; }
    void setSearch(const QString& search);
    [[nodiscard]] QString order() const;
    void setOrder(const QString& order);
    /// The module's filter and order as a text that can be kept, and back from it; what it does not know is left alone.
    [[nodiscard]] virtual QString choiceText() const;
    virtual void recallChoice(CleanerModule module, const QString& text);
    [[nodiscard]] CleanerModule module() const { return module_; }
    [[nodiscard]] bool hidesAll() const;
    [[nodiscard]] QString hiddenSelection() const;
    /// Takes filter and search away.
    Q_INVOKABLE virtual void showAll();

    /// Flips the tick of a row; a half-ticked category becomes fully ticked.
    Q_INVOKABLE void toggle(int row);
    Q_INVOKABLE void toggleExpanded(int row);
    /// Unfolds or folds; the row of a path folds its category.
    Q_INVOKABLE void setExpanded(int row, bool expanded);
    /// Ticks or unticks every listed category and nothing else.
    Q_INVOKABLE virtual void setAllSelected(bool selected);
    /// The row's files are never offered again; an application is what it is installed as.
    Q_INVOKABLE void keep(int row);
    /// Whether a row is of a kind that can be kept: what lies in a Trash is not.
    Q_INVOKABLE [[nodiscard]] bool canKeep(int row) const;
    /// Whether the row is a path that stays because it holds what is kept.
    Q_INVOKABLE [[nodiscard]] bool isHeldBack(int row) const;
    /// Puts a path of a Trash back where it was.
    Q_INVOKABLE void putBack(int row);
    /// The row of the category that a row belongs to.
    Q_INVOKABLE [[nodiscard]] int headOf(int row) const;

Q_SIGNALS:
    void summaryChanged();
    void filterChanged();
    /// The user wants to see what is kept.
    void keptAsked();
    void watchedChanged();

protected:
    /// Positions in the store's array of the categories to list.
    [[nodiscard]] virtual std::vector<int> listedItems() const;
    [[nodiscard]] CleanerStore& store() const { return store_; }
    [[nodiscard]] std::vector<std::filesystem::path> pathsOf(int row) const override;
    [[nodiscard]] int nameRole() const override { return TitleRole; }
    [[nodiscard]] const FileKinds& fileKinds() const { return desktop().fileKinds(); }

private:
    enum class Order : std::uint8_t { given, size, name, date };
    /// What the user chose to see of a module.
    struct Choice {
        CleanupFilter filter = CleanupFilter::all;
        QString search;
        Order order = Order::given;
    };
    [[nodiscard]] const Choice& choice() const;
    [[nodiscard]] std::vector<int> chosenItems() const;
    void putInOrder(std::vector<int>& indices) const;
    [[nodiscard]] bool finds(const CleanupItem& item) const;
    void applyChoice();
    [[nodiscard]] std::vector<KeyedRow> wantedRows() const;
    void addPaths(std::vector<KeyedRow>& wanted, const KeyedRow& head) const;
    [[nodiscard]] const CleanupItem& itemOf(const KeyedRow& row) const;
    [[nodiscard]] const RowTicks& ticksOf(const KeyedRow& row) const;
    [[nodiscard]] bool isExpanded(const RowKey& key) const;
    [[nodiscard]] QVariant categoryData(const KeyedRow& row, const CleanupItem& item, int role) const;
    [[nodiscard]] QVariant appData(const CleanupItem& item, int role) const;
    [[nodiscard]] QVariant fileData(const CleanupItem& item, int role) const;
    [[nodiscard]] QVariant targetData(const KeyedRow& row, const CleanupItem& item, int role) const;
    void noteSelectionChange(int itemIndex);
    void publishSelectionChanges();

    CleanerStore& store_;
    CleanerModule module_ = CleanerModule::smartScan;
    std::map<CleanerModule, Choice> choices_;
    std::vector<int> indices_; ///< of the listed categories in the store's array
    /// Keys of the categories that the user folded or unfolded against the initial state.
    std::set<RowKey> flipped_;
    bool initiallyExpanded_ = false;
    bool watched_ = true;
    std::uint64_t builtFrom_ = 0;   ///< the revision of the store's array that the rows show
    std::vector<int> changedItems_; ///< whose ticks changed since the last publication
};

} // namespace vellmoor
