#include "CleanupListModel.h"

#include "ApplicationIconProvider.h"
#include "ByteCount.h"
#include "FileKindLook.h"
#include "QtText.h"

#include <QMetaObject>

#include <algorithm>
#include <utility>

namespace vellmoor {
namespace {

QString filesText(std::int64_t files) {
    return files == 1 ? localised("1 个文件") : localised("%d 个文件", files);
}

QString amountText(const CleanupItem& item) {
    const std::string size = item.sizeText();
    switch (item.files) {
    case 0:
        return toQt(size);
    case 1:
        return filesText(1) + QStringLiteral(" · ") + toQt(size);
    default:
        return localised("%d 文件 · %@", item.files, size);
    }
}

} // namespace

CleanupListModel::CleanupListModel(CleanerStore& store, Desktop& desktop, QObject* parent)
    : QAbstractListModel(parent),
      store_(store),
      desktop_(desktop) {
    connect(&store_, &CleanerStore::cleanupItemsChanged, this, [this] { rebuild(); });
    connect(&store_, &CleanerStore::selectionChanged, this, &CleanupListModel::noteSelectionChange);
    rebuild();
}

int CleanupListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QHash<int, QByteArray> CleanupListModel::roleNames() const {
    return {{NameRole, "name"},         {IsTargetRole, "isTarget"},     {TitleRole, "title"},
            {DetailRole, "detail"},     {AmountRole, "amount"},         {SizeRole, "size"},
            {ModifiedRole, "modified"}, {SymbolRole, "symbol"},         {TintRole, "tint"},
            {RiskRole, "risk"},         {RiskTitleRole, "riskTitle"},   {CleanableRole, "cleanable"},
            {TickedRole, "ticked"},     {PartialRole, "partial"},       {ExpandedRole, "expanded"},
            {LastRole, "last"},         {ExpandableRole, "expandable"}, {KindRole, "kind"},
            {IconRole, "icon"},         {KindSymbolRole, "kindSymbol"}, {RunningRole, "running"},
            {BundleRole, "bundle"},     {LeftoversRole, "leftovers"}};
}

void CleanupListModel::setModule(CleanerModule module) {
    if (module_ != module) {
        module_ = module;
        flipped_.clear();
        rebuild();
    }
}

int CleanupListModel::selectedCount() const {
    const auto& items = store_.cleanupItems();
    return static_cast<int>(std::ranges::count_if(
        indices_, [&](int index) { return items.at(static_cast<std::size_t>(index)).isSelected; }));
}

QString CleanupListModel::filter() const {
    return toQt(rawValue(filter_));
}

void CleanupListModel::setFilter(const QString& filter) {
    const auto wanted = std::ranges::find(allCleanupFilters, filter, [](CleanupFilter f) { return toQt(rawValue(f)); });
    if (wanted == allCleanupFilters.end() || *wanted == filter_) {
        return;
    }
    filter_ = *wanted;
    rebuild();
    Q_EMIT filterChanged();
}

std::vector<int> CleanupListModel::listedItems() const {
    return store_.itemIndices(module_, filter_);
}

void CleanupListModel::rebuild() {
    beginResetModel();
    indices_ = listedItems();
    rows_.clear();
    for (int position = 0; position < itemCount(); ++position) {
        const Row row{position, -1};
        rows_.push_back(row);
        const CleanupItem& item = itemAt(row);
        const int paths = isExpanded(item) ? static_cast<int>(item.targets.size()) : 0;
        for (int target = 0; target < paths; ++target) {
            rows_.push_back({position, target});
        }
    }
    changedItems_.clear();
    endResetModel();
    Q_EMIT summaryChanged();
}

const CleanupItem& CleanupListModel::itemAt(const Row& row) const {
    return store_.cleanupItems().at(static_cast<std::size_t>(indices_.at(static_cast<std::size_t>(row.position))));
}

const CleanupListModel::Row* CleanupListModel::rowAt(int row) const {
    return row >= 0 && row < static_cast<int>(rows_.size()) ? &rows_[static_cast<std::size_t>(row)] : nullptr;
}

bool CleanupListModel::isExpanded(const CleanupItem& item) const {
    return initiallyExpanded_ != flipped_.contains(item.id);
}

QVariant CleanupListModel::data(const QModelIndex& index, int role) const {
    const Row* row = rowAt(index.row());
    if (row == nullptr) {
        return {};
    }
    const CleanupItem& item = itemAt(*row);
    if (role == IsTargetRole) {
        return row->target >= 0;
    }
    if (role == LastRole) {
        return index.row() + 1 == rowCount();
    }
    if (role == CleanableRole) {
        return item.isCleanable;
    }
    if (role == RiskRole) {
        return toQt(rawValue(item.risk));
    }
    if (role == RiskTitleRole) {
        return toQt(vellmoor::title(item.risk));
    }
    return row->target >= 0 ? targetData(*row, item, role) : categoryData(*row, item, role);
}

QVariant CleanupListModel::categoryData(const Row& row, const CleanupItem& item, int role) const {
    switch (role) {
    case NameRole:
        return QStringLiteral("item.%1").arg(row.position);
    case TitleRole:
        return toQt(item.title);
    case DetailRole:
        return toQt(item.description);
    case AmountRole:
        return amountText(item);
    case SizeRole:
        return toQt(item.sizeText());
    case SymbolRole:
        return toQt(item.symbol);
    case TintRole:
        return toQt(tintName(item.tint));
    case TickedRole:
        return item.isCleanable && item.isSelected;
    case PartialRole:
        return item.isSelected && std::cmp_less(item.selectedTargetCount(), item.targets.size());
    case ExpandedRole:
        return isExpanded(item);
    case ExpandableRole:
        return !item.targets.empty();
    case ModifiedRole:
    case KindRole:
    case KindSymbolRole:
        return fileData(item, role);
    default:
        return appData(item, role);
    }
}

QVariant CleanupListModel::fileData(const CleanupItem& item, int role) const {
    if (item.targets.empty()) {
        return QString();
    }
    const CleanupTarget& file = item.targets.front();
    if (role == ModifiedRole) {
        return file.modifiedAt ? toQt(file.modified) : localised("未知");
    }
    const LargeFileKindFilter kind = fileKind(file.url, fileKinds());
    return role == KindSymbolRole ? kindSymbol(kind) : kindTitle(kind);
}

QVariant CleanupListModel::appData(const CleanupItem& item, int role) const {
    if (!item.appInfo) {
        return role == RunningRole ? QVariant(false) : QVariant(QString());
    }
    switch (role) {
    case IconRole:
        return applicationIconSource(desktop_, item.appInfo->appPath);
    case RunningRole:
        return item.appInfo->isRunning;
    case BundleRole:
        return item.appInfo->bundleIdentifier ? toQt(*item.appInfo->bundleIdentifier) : localised("未读取到 Bundle ID");
    case LeftoversRole:
        return localised("%d 个残留", item.appInfo->residualCount);
    default:
        return {};
    }
}

QVariant CleanupListModel::targetData(const Row& row, const CleanupItem& item, int role) const {
    const CleanupTarget& target = item.targets.at(static_cast<std::size_t>(row.target));
    switch (role) {
    case NameRole:
        return QStringLiteral("item.%1.target.%2").arg(row.position).arg(row.target);
    case TitleRole:
        return toQt(target.name);
    case DetailRole:
        return toQt(target.location);
    case AmountRole:
        return filesText(target.files);
    case SizeRole:
        return toQt(target.sizeText());
    case ModifiedRole:
        return toQt(target.modified);
    case SymbolRole:
        return toQt(target.symbol);
    case TintRole:
        return toQt(tintName(item.tint));
    case TickedRole:
        return item.isCleanable && target.isSelected;
    case PartialRole:
    case ExpandedRole:
    case ExpandableRole:
    case RunningRole:
        return false;
    default:
        return QString();
    }
}

void CleanupListModel::toggle(int row) {
    const Row* found = rowAt(row);
    if (found == nullptr || !itemAt(*found).isCleanable) {
        return;
    }
    const CleanupItem& item = itemAt(*found);
    const int index = indices_.at(static_cast<std::size_t>(found->position));
    if (found->target >= 0) {
        store_.setTargetSelected(index, found->target,
                                 !item.targets.at(static_cast<std::size_t>(found->target)).isSelected);
        return;
    }
    const bool partial = std::cmp_less(item.selectedTargetCount(), item.targets.size());
    store_.setItemSelected(index, !item.isSelected || partial);
}

void CleanupListModel::toggleExpanded(int row) {
    const Row* found = rowAt(row);
    if (found != nullptr) {
        setExpanded(row, found->target < 0 && !isExpanded(itemAt(*found)));
    }
}

void CleanupListModel::setExpanded(int row, bool expanded) {
    const Row* found = rowAt(row);
    if (found == nullptr) {
        return;
    }
    const int position = found->position;
    const int head = found->target < 0 ? row : row - found->target - 1;
    const CleanupItem& item = itemAt({position, -1});
    const int paths = static_cast<int>(item.targets.size());
    if (isExpanded(item) == expanded || paths == 0) {
        return;
    }
    if (expanded == initiallyExpanded_) {
        flipped_.erase(item.id);
    } else {
        flipped_.insert(item.id);
    }
    const auto first = rows_.begin() + head + 1;
    if (expanded) {
        beginInsertRows({}, head + 1, head + paths);
        std::vector<Row> added;
        for (int target = 0; target < paths; ++target) {
            added.push_back({position, target});
        }
        rows_.insert(first, added.begin(), added.end());
        endInsertRows();
    } else {
        beginRemoveRows({}, head + 1, head + paths);
        rows_.erase(first, first + paths);
        endRemoveRows();
    }
    Q_EMIT dataChanged(index(head), index(head), {ExpandedRole, LastRole});
}

void CleanupListModel::setAllSelected(bool selected) {
    // A copy: under the filter "selected" an untick takes the row out of the list.
    const std::vector<int> listed = indices_;
    store_.setItemsSelected(listed, selected);
}

void CleanupListModel::reveal(int row) {
    const Row* found = rowAt(row);
    if (found == nullptr) {
        return;
    }
    const CleanupItem& item = itemAt(*found);
    const std::size_t target = found->target < 0 ? 0 : static_cast<std::size_t>(found->target);
    if (target < item.targets.size()) {
        desktop_.reveal(item.targets[target].url);
    }
}

void CleanupListModel::noteSelectionChange(int itemIndex) {
    // Ticking a category of thousands of paths changes each of them: tell the view once.
    if (changedItems_.empty()) {
        QMetaObject::invokeMethod(this, &CleanupListModel::publishSelectionChanges, Qt::QueuedConnection);
    }
    changedItems_.insert(itemIndex);
}

void CleanupListModel::publishSelectionChanges() {
    const std::set<int> changed = std::exchange(changedItems_, {});
    if (changed.empty()) {
        return; // the list was rebuilt meanwhile
    }
    if (filter_ == CleanupFilter::selected) {
        rebuild();
        return;
    }
    for (int position = 0; position < itemCount(); ++position) {
        if (changed.contains(indices_[static_cast<std::size_t>(position)])) {
            const int head = rowOfItem(position);
            const CleanupItem& item = itemAt({position, -1});
            const int paths = isExpanded(item) ? static_cast<int>(item.targets.size()) : 0;
            Q_EMIT dataChanged(index(head), index(head + paths), {TickedRole, PartialRole});
        }
    }
    Q_EMIT summaryChanged();
}

int CleanupListModel::rowOfItem(int position) const {
    const auto found =
        std::ranges::find_if(rows_, [&](const Row& row) { return row.position == position && row.target < 0; });
    return static_cast<int>(found - rows_.begin());
}

} // namespace vellmoor
