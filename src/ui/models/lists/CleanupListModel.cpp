#include "CleanupListModel.h"

#include "QtText.h"
#include "texts/ByteCount.h"

#include <QMetaObject>

#include <algorithm>
#include <array>
#include <utility>

namespace vellmoor {
namespace {

constexpr std::array<QLatin1String, 4> orders{QLatin1String("given"), QLatin1String("size"), QLatin1String("name"),
                                              QLatin1String("date")};

/// A category is the same one after another scan when it has the same name, and is a file or application of the same
/// path.
RowKey keyOf(const CleanupItem& item) {
    const RowKey key = RowKey().with(static_cast<int>(item.module)).with(item.title);
    if (item.appInfo) {
        return key.with(item.appInfo->appPath);
    }
    const bool isFile = item.module == CleanerModule::largeFiles && !item.targets.empty();
    return isFile ? key.with(item.targets.front().url.native()) : key;
}

std::optional<TimePoint> newest(const CleanupItem& item) {
    std::optional<TimePoint> found;
    for (const CleanupTarget& target : item.targets) {
        found = std::max(found, target.modifiedAt); // none is less than any
    }
    return found;
}

} // namespace

CleanupListModel::CleanupListModel(CleanerStore& store, Desktop& desktop, QObject* parent)
    : KeyedListModel(desktop, parent),
      store_(store) {
    connect(&store_, &CleanerStore::cleanupItemsChanged, this, [this] {
        if (builtFrom_ != store_.itemsRevision()) {
            rebuild();
        }
    });
    connect(&store_, &CleanerStore::selectionChanged, this, &CleanupListModel::noteSelectionChange);
    rebuild();
}

void CleanupListModel::setModule(CleanerModule module) {
    if (module_ != module) {
        module_ = module;
        flipped_.clear();
        applyChoice();
    }
}

const CleanupListModel::Choice& CleanupListModel::choice() const {
    static const Choice none;
    const auto found = choices_.find(module_);
    return found == choices_.end() ? none : found->second;
}

void CleanupListModel::applyChoice() {
    rebuild();
    Q_EMIT filterChanged();
}

int CleanupListModel::selectedCount() const {
    const auto& items = store_.cleanupItems();
    return static_cast<int>(
        std::ranges::count_if(indices_, [&](int index) { return items[static_cast<std::size_t>(index)].isSelected; }));
}

QString CleanupListModel::filter() const {
    return toQt(rawValue(choice().filter));
}

void CleanupListModel::setFilter(const QString& filter) {
    const auto wanted = std::ranges::find(allCleanupFilters, filter, [](CleanupFilter f) { return toQt(rawValue(f)); });
    if (wanted != allCleanupFilters.end() && *wanted != choice().filter) {
        choices_[module_].filter = *wanted;
        applyChoice();
    }
}

void CleanupListModel::setSearch(const QString& search) {
    if (search != choice().search) {
        choices_[module_].search = search;
        applyChoice();
    }
}

QString CleanupListModel::order() const {
    return orders.at(static_cast<std::size_t>(choice().order));
}

void CleanupListModel::setOrder(const QString& order) {
    const auto* const wanted = std::ranges::find(orders, order);
    if (wanted != orders.end() && order != this->order()) {
        choices_[module_].order = static_cast<Order>(wanted - orders.begin());
        applyChoice();
    }
}

QString CleanupListModel::choiceText() const {
    return filter() + QLatin1Char(' ') + order();
}

void CleanupListModel::recallChoice(CleanerModule module, const QString& text) {
    const QStringList words = text.split(QLatin1Char(' '));
    const auto filter =
        std::ranges::find(allCleanupFilters, words.value(0), [](CleanupFilter f) { return toQt(rawValue(f)); });
    const auto* const order = std::ranges::find(orders, words.value(1));
    Choice& choice = choices_[module];
    choice.filter = filter == allCleanupFilters.end() ? choice.filter : *filter;
    choice.order = order == orders.end() ? choice.order : static_cast<Order>(order - orders.begin());
    if (module == module_) {
        applyChoice();
    }
}

bool CleanupListModel::hidesAll() const {
    return indices_.empty() && store_.ticks(module_).rows > 0;
}

QString CleanupListModel::hiddenSelection() const {
    std::int64_t hidden = store_.selectedBytes(module_);
    for (const int index : indices_) {
        hidden -= store_.rowTicks(index).selectedBytes;
    }
    return hidden > 0 ? localised("%@ 被筛选隐藏", byteCountText(hidden)) : QString();
}

void CleanupListModel::showAll() {
    choices_[module_].filter = CleanupFilter::all;
    choices_[module_].search.clear();
    applyChoice();
}

std::vector<int> CleanupListModel::listedItems() const {
    return store_.itemIndices(module_, choice().filter);
}

bool CleanupListModel::finds(const CleanupItem& item) const {
    const auto contains = [&](const std::string& text) {
        return toQt(text).contains(choice().search, Qt::CaseInsensitive);
    };
    return contains(item.title) || contains(item.description) ||
           std::ranges::any_of(item.targets,
                               [&](const CleanupTarget& target) { return contains(target.url.native()); });
}

std::vector<int> CleanupListModel::chosenItems() const {
    std::vector<int> chosen = listedItems();
    const auto& items = store_.cleanupItems();
    if (!choice().search.isEmpty()) {
        std::erase_if(chosen, [&](int index) { return !finds(items.at(static_cast<std::size_t>(index))); });
    }
    putInOrder(chosen);
    return chosen;
}

void CleanupListModel::putInOrder(std::vector<int>& indices) const {
    const auto item = [this](int index) -> const CleanupItem& {
        return store_.cleanupItems().at(static_cast<std::size_t>(index));
    };
    switch (choice().order) {
    case Order::given:
        break;
    case Order::size:
        std::ranges::stable_sort(indices, std::ranges::greater(), [&](int index) { return item(index).bytes; });
        break;
    case Order::name:
        std::ranges::stable_sort(indices, [&](int a, int b) {
            return QString::localeAwareCompare(toQt(item(a).title), toQt(item(b).title)) < 0;
        });
        break;
    case Order::date:
        std::ranges::stable_sort(indices, std::ranges::greater(), [&](int index) { return newest(item(index)); });
        break;
    }
}

void CleanupListModel::setWatched(bool watched) {
    if (watched_ != watched) {
        watched_ = watched;
        rebuild();
        Q_EMIT watchedChanged();
    }
}

void CleanupListModel::rebuild() {
    builtFrom_ = store_.itemsRevision();
    indices_ = watched_ ? chosenItems() : std::vector<int>();
    changedItems_.clear();
    setRows(wantedRows());
    Q_EMIT summaryChanged();
}

std::vector<KeyedRow> CleanupListModel::wantedRows() const {
    std::vector<KeyedRow> wanted;
    wanted.reserve(indices_.size());
    DistinctKeys keys(indices_.size());
    for (int position = 0; position < itemCount(); ++position) {
        const KeyedRow head{.key = keys.next(keyOf(itemOf({.record = position}))), .record = position};
        wanted.push_back(head);
        if (isExpanded(head.key)) {
            addPaths(wanted, head);
        }
    }
    return wanted;
}

void CleanupListModel::addPaths(std::vector<KeyedRow>& wanted, const KeyedRow& head) const {
    const std::vector<CleanupTarget>& targets = itemOf(head).targets;
    wanted.reserve(std::max(wanted.capacity(), wanted.size() + targets.size()));
    DistinctKeys keys(targets.size());
    int part = 0;
    for (const CleanupTarget& target : targets) {
        wanted.push_back({.key = keys.next(head.key.with(target.url.native())), .record = head.record, .part = part++});
    }
}

const CleanupItem& CleanupListModel::itemOf(const KeyedRow& row) const {
    return store_.cleanupItems().at(static_cast<std::size_t>(indices_.at(static_cast<std::size_t>(row.record))));
}

const RowTicks& CleanupListModel::ticksOf(const KeyedRow& row) const {
    return store_.rowTicks(indices_.at(static_cast<std::size_t>(row.record)));
}

bool CleanupListModel::isExpanded(const RowKey& key) const {
    return initiallyExpanded_ != flipped_.contains(key);
}

void CleanupListModel::toggle(int row) {
    const KeyedRow* found = rowAt(row);
    if (found == nullptr || !itemOf(*found).isCleanable) {
        return;
    }
    const CleanupItem& item = itemOf(*found);
    const int index = indices_.at(static_cast<std::size_t>(found->record));
    if (found->part >= 0) {
        store_.setTargetSelected(index, found->part,
                                 !item.targets.at(static_cast<std::size_t>(found->part)).isSelected);
        return;
    }
    const bool partial = std::cmp_less(store_.rowTicks(index).selectedPaths, item.targets.size());
    store_.setItemSelected(index, !item.isSelected || partial);
}

void CleanupListModel::toggleExpanded(int row) {
    const KeyedRow* found = rowAt(row);
    if (found != nullptr) {
        setExpanded(row, found->part < 0 && !isExpanded(found->key));
    }
}

int CleanupListModel::headOf(int row) const {
    const KeyedRow* found = rowAt(row);
    return found == nullptr || found->part < 0 ? row : row - found->part - 1;
}

void CleanupListModel::setExpanded(int row, bool expanded) {
    const KeyedRow* head = rowAt(headOf(row));
    if (head == nullptr || itemOf(*head).targets.empty() || isExpanded(head->key) == expanded) {
        return;
    }
    if (expanded == initiallyExpanded_) {
        flipped_.erase(head->key);
    } else {
        flipped_.insert(head->key);
    }
    setRows(wantedRows());
}

void CleanupListModel::setAllSelected(bool selected) {
    // A copy: under the filter "selected" an untick takes the row out of the list.
    const std::vector<int> listed = indices_;
    store_.setItemsSelected(listed, selected);
}

bool CleanupListModel::canKeep(int row) const {
    const KeyedRow* found = rowAt(row);
    return found != nullptr && itemOf(*found).module != CleanerModule::trash && !pathsOf(row).empty();
}

bool CleanupListModel::isHeldBack(int row) const {
    const KeyedRow* found = rowAt(row);
    return found != nullptr && found->part >= 0 &&
           !itemOf(*found).targets.at(static_cast<std::size_t>(found->part)).mayGo();
}

void CleanupListModel::keep(int row) {
    const KeyedRow* found = rowAt(row);
    if (!canKeep(row)) {
        return;
    }
    const auto& app = itemOf(*found).appInfo;
    store_.keep(found->part < 0 && app ? std::vector<std::filesystem::path>{app->appPath} : pathsOf(row));
}

void CleanupListModel::putBack(int row) {
    const KeyedRow* found = rowAt(row);
    if (found != nullptr && found->part >= 0) {
        store_.putBackTarget(indices_.at(static_cast<std::size_t>(found->record)), found->part);
    }
}

std::vector<std::filesystem::path> CleanupListModel::pathsOf(int row) const {
    const KeyedRow* found = rowAt(row);
    std::vector<std::filesystem::path> paths;
    if (found == nullptr) {
        return paths;
    }
    int part = 0;
    for (const CleanupTarget& target : itemOf(*found).targets) {
        if ((found->part < 0 || found->part == part) && standsForFile(target)) {
            paths.push_back(target.url);
        }
        ++part;
    }
    return paths;
}

void CleanupListModel::noteSelectionChange(int itemIndex) {
    // Ticking a category of thousands of paths changes each of them: tell the view once.
    if (changedItems_.empty()) {
        QMetaObject::invokeMethod(this, &CleanupListModel::publishSelectionChanges, Qt::QueuedConnection);
    }
    changedItems_.push_back(itemIndex);
}

void CleanupListModel::publishSelectionChanges() {
    const std::vector<int> changedItems = std::exchange(changedItems_, {});
    if (changedItems.empty()) {
        return; // the list was rebuilt meanwhile
    }
    if (choice().filter == CleanupFilter::selected) {
        rebuild();
        return;
    }
    std::vector<bool> isChanged(store_.cleanupItems().size());
    for (const int item : changedItems) {
        isChanged.at(static_cast<std::size_t>(item)) = true;
    }
    const auto rowChanged = [&](const KeyedRow& row) {
        return row.record >= 0 && isChanged[static_cast<std::size_t>(indices_[static_cast<std::size_t>(row.record)])];
    };
    // Neighbours at once: a view looks at all its rows for each change that it is told.
    std::vector<std::pair<int, int>> ranges;
    for (int row = 0; row < rowCount(); ++row) {
        if (!rowChanged(rows()[static_cast<std::size_t>(row)])) {
            continue;
        }
        if (ranges.empty() || ranges.back().second + 1 != row) {
            ranges.emplace_back(row, row);
        }
        ranges.back().second = row;
    }
    for (const auto& [first, last] : ranges) {
        Q_EMIT dataChanged(index(first), index(last), {TickedRole, PartialRole});
    }
    Q_EMIT summaryChanged();
}

} // namespace vellmoor
