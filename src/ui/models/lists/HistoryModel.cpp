#include "HistoryModel.h"

#include "ModuleLook.h"
#include "QtText.h"
#include "disk/Paths.h"
#include "texts/ByteCount.h"

#include <QDateTime>
#include <QLocale>

#include <algorithm>

namespace vellmoor {
namespace {

QString when(TimePoint time) {
    const QLocale locale(L::language() == AppLanguage::chinese ? QLocale::Chinese : QLocale::English);
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time.time_since_epoch()).count();
    return locale.toString(QDateTime::fromSecsSinceEpoch(seconds), QLocale::ShortFormat);
}

bool canGoBack(const HistoryItem& item) {
    return !item.place.empty() && !item.isPutBack;
}

QString itemState(const HistoryItem& item) {
    if (item.isPutBack) {
        return localised("已放回");
    }
    if (canGoBack(item)) {
        return localised("在废纸篓中");
    }
    switch (item.fate) {
    case CleanupFate::Removed:
        return localised("已永久删除");
    case CleanupFate::Untried:
        return localised("未处理");
    default:
        return item.reason.empty() ? localised("废纸篓中已没有") : toQt(item.reason);
    }
}

} // namespace

HistoryModel::HistoryModel(CleanerStore& store, Desktop& desktop, QObject* parent)
    : KeyedListModel(desktop, parent),
      store_(store) {
    connect(&store_, &CleanerStore::historyChanged, this, &HistoryModel::reload);
    reload();
}

int HistoryModel::count() const {
    return static_cast<int>(store_.history().cleans.size() + store_.history().switches.size());
}

QString HistoryModel::problem() const {
    return toQt(store_.history().problem);
}

QHash<int, QByteArray> HistoryModel::roleNames() const {
    return {{NameRole, "name"},
            {IsItemRole, "isItem"},
            {TitleRole, "title"},
            {DetailRole, "detail"},
            {SizeRole, "size"},
            {StateRole, "condition"},
            {SymbolRole, "symbol"},
            {ReturnableRole, "returnable"},
            {UnfinishedRole, "unfinished"},
            {ExpandableRole, "expandable"},
            {ExpandedRole, "expanded"},
            {TickedRole, "ticked"},
            {FilesRole, "files"}};
}

void HistoryModel::reload() {
    setRows(wantedRows());
    Q_EMIT historyChanged();
}

/// Records are the cleans, then the switches; parts are the items of a clean.
std::vector<KeyedRow> HistoryModel::wantedRows() const {
    std::vector<KeyedRow> wanted;
    const History& history = store_.history();
    int record = 0;
    for (const HistoryClean& clean : history.cleans) {
        wanted.push_back({.key = clean.id, .record = record});
        if (unfolded_.contains(clean.id)) {
            for (std::size_t part = 0; part < clean.items.size(); ++part) {
                wanted.push_back({.key = clean.id + '\n' + std::to_string(clean.items[part].index),
                                  .record = record,
                                  .part = static_cast<int>(part)});
            }
        }
        ++record;
    }
    int number = 0;
    for (const HistorySwitch& change : history.switches) {
        const auto at = std::to_string(change.at.time_since_epoch().count());
        wanted.push_back(
            {.key = at + '\n' + change.file.native() + '\n' + std::to_string(number++), .record = record++});
    }
    return wanted;
}

const HistoryClean* HistoryModel::cleanAt(int row) const {
    const KeyedRow* found = rowAt(row);
    const auto& cleans = store_.history().cleans;
    const bool inside = found != nullptr && std::cmp_less(found->record, cleans.size());
    return inside ? &cleans[static_cast<std::size_t>(found->record)] : nullptr;
}

std::optional<HistoryItem> HistoryModel::itemAt(int row) const {
    const HistoryClean* clean = cleanAt(row);
    const int part = clean == nullptr ? -1 : rowAt(row)->part;
    const bool inside = part >= 0 && std::cmp_less(part, clean->items.size());
    return inside ? std::optional(clean->items[static_cast<std::size_t>(part)]) : std::nullopt;
}

const HistorySwitch* HistoryModel::switchAt(int row) const {
    const KeyedRow* found = rowAt(row);
    const History& history = store_.history();
    if (found == nullptr || std::cmp_less(found->record, history.cleans.size())) {
        return nullptr;
    }
    const std::size_t number = static_cast<std::size_t>(found->record) - history.cleans.size();
    return number < history.switches.size() ? &history.switches[number] : nullptr;
}

QVariant HistoryModel::data(const QModelIndex& index, int role) const {
    const KeyedRow* row = rowAt(index.row());
    if (row == nullptr) {
        return {};
    }
    if (role == FilesRole) {
        return !pathsOf(index.row()).empty();
    }
    if (const HistorySwitch* change = switchAt(index.row())) {
        return switchData(row->record - static_cast<int>(store_.history().cleans.size()), *change, role);
    }
    if (const auto item = itemAt(index.row())) {
        return partData(*row, *item, role);
    }
    const HistoryClean* clean = cleanAt(index.row());
    return clean == nullptr ? QVariant() : cleanData(*row, *clean, role);
}

QVariant HistoryModel::cleanData(const KeyedRow& row, const HistoryClean& clean, int role) const {
    const bool unfinished = clean.state != HistoryState::Finished && clean.openCount > 0;
    switch (role) {
    case NameRole:
        return QStringLiteral("history.%1").arg(row.record);
    case TitleRole:
        return toQt(title(clean.module));
    case DetailRole:
        return when(clean.at) + QStringLiteral(" · ") + countText("%d 项", "1 项", clean.movedCount) +
               QStringLiteral(" · ") + toQt(byteCountText(clean.movedBytes));
    case SizeRole:
        return toQt(byteCountText(clean.movedBytes));
    case StateRole:
        if (unfinished) {
            return localised("未完成");
        }
        return clean.trashedCount > 0 ? localised("在废纸篓中 %@", byteCountText(clean.trashedBytes))
                                      : localised("废纸篓中已没有");
    case SymbolRole:
        return moduleSymbol(clean.module);
    case ReturnableRole:
        return std::ranges::any_of(clean.items.all(),
                                   [&](const HistoryItem& item) { return canGoBack(item) && isTicked(clean, item); });
    case UnfinishedRole:
        return unfinished;
    case ExpandableRole:
        return !clean.items.empty();
    case ExpandedRole:
        return unfolded_.contains(clean.id);
    case IsItemRole:
    case TickedRole:
        return false;
    default:
        return {};
    }
}

QVariant HistoryModel::partData(const KeyedRow& row, const HistoryItem& item, int role) const {
    switch (role) {
    case NameRole:
        return QStringLiteral("history.%1.item.%2").arg(row.record).arg(row.part);
    case TitleRole:
        return toQt(std::filesystem::path(item.path).filename().native());
    case DetailRole:
        return toQt(displayPath(std::filesystem::path(item.path).parent_path(), desktop().homeFolder()));
    case SizeRole:
        return toQt(byteCountText(item.bytes));
    case StateRole:
        return itemState(item);
    case SymbolRole:
        return QStringLiteral("doc");
    case ReturnableRole:
        return canGoBack(item);
    case TickedRole:
        return canGoBack(item) && isTicked(store_.history().cleans[static_cast<std::size_t>(row.record)], item);
    case IsItemRole:
        return true;
    case UnfinishedRole:
    case ExpandableRole:
    case ExpandedRole:
        return false;
    default:
        return {};
    }
}

QVariant HistoryModel::switchData(int number, const HistorySwitch& change, int role) const {
    switch (role) {
    case NameRole:
        return QStringLiteral("history.switch.%1").arg(number);
    case TitleRole:
        return toQt(change.name);
    case DetailRole:
        return when(change.at) + QStringLiteral(" · ") + toQt(displayPath(change.file, desktop().homeFolder()));
    case SizeRole:
        return QString();
    case StateRole:
        return change.isEnabled ? localised("已启用") : localised("已禁用");
    case SymbolRole:
        return QStringLiteral("power");
    case ReturnableRole:
        return change.canBePutBack;
    case IsItemRole:
    case UnfinishedRole:
    case ExpandableRole:
    case ExpandedRole:
    case TickedRole:
        return false;
    default:
        return {};
    }
}

bool HistoryModel::isTicked(const HistoryClean& clean, const HistoryItem& item) const {
    return !unticked_.contains({clean.id, item.index});
}

int HistoryModel::headOf(int row) const {
    const KeyedRow* found = rowAt(row);
    return found == nullptr || found->part < 0 ? row : row - found->part - 1;
}

void HistoryModel::setExpanded(int row, bool expanded) {
    const HistoryClean* clean = cleanAt(row);
    if (clean == nullptr || clean->items.empty() || unfolded_.contains(clean->id) == expanded) {
        return;
    }
    if (expanded) {
        unfolded_.insert(clean->id);
    } else {
        unfolded_.erase(clean->id);
    }
    setRows(wantedRows());
}

void HistoryModel::toggleExpanded(int row) {
    const HistoryClean* clean = cleanAt(row);
    if (clean != nullptr) {
        setExpanded(row, !unfolded_.contains(clean->id));
    }
}

void HistoryModel::toggle(int row) {
    const auto item = itemAt(row);
    if (!item || !canGoBack(*item)) {
        return;
    }
    const std::pair key(cleanAt(row)->id, item->index);
    if (unticked_.erase(key) == 0) {
        unticked_.insert(key);
    }
    for (const int changed : {row, headOf(row)}) {
        Q_EMIT dataChanged(index(changed), index(changed), {TickedRole, ReturnableRole});
    }
}

void HistoryModel::putBack(int row) {
    if (const HistorySwitch* change = switchAt(row)) {
        store_.putBackSwitch(*change);
        return;
    }
    const HistoryClean* clean = cleanAt(row);
    if (clean == nullptr) {
        return;
    }
    std::vector<std::size_t> chosen;
    if (const auto item = itemAt(row)) {
        chosen.push_back(item->index);
    } else {
        for (const HistoryItem& candidate : clean->items.all()) {
            if (canGoBack(candidate) && isTicked(*clean, candidate)) {
                chosen.push_back(candidate.index);
            }
        }
    }
    if (!chosen.empty()) { // none would mean all
        store_.putBack(clean->id, chosen);
    }
}

QString HistoryModel::cleanOf(int row) const {
    const HistoryClean* clean = cleanAt(row);
    return clean == nullptr ? QString() : QString::fromStdString(clean->id);
}

/// Where it lies now: in the Trash, or where it was put back.
std::vector<std::filesystem::path> HistoryModel::pathsOf(int row) const {
    if (const HistorySwitch* change = switchAt(row)) {
        return {change->file};
    }
    if (const auto item = itemAt(row)) {
        if (item->isPutBack) {
            return {item->path};
        }
        if (canGoBack(*item)) {
            return {item->place};
        }
    }
    return {};
}

} // namespace vellmoor
