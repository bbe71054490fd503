#include "KeyedListModel.h"

#include "QtText.h"

#include <QClipboard>
#include <QGuiApplication>

#include <algorithm>

namespace vellmoor {
namespace {

/// A list that was sorted anew moves as a whole: told one by one, thousands of moves would take seconds.
constexpr std::size_t mostRowsToMoveSingly = 300;

std::ptrdiff_t offset(std::size_t row) {
    return static_cast<std::ptrdiff_t>(row);
}

} // namespace

int KeyedListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int KeyedListModel::rowStartingWith(const QString& prefix, int after) const {
    const int count = rowCount();
    for (int step = 1; step <= count; ++step) {
        const int row = (std::max(after, -1) + step) % count;
        if (data(index(row), nameRole()).toString().startsWith(prefix, Qt::CaseInsensitive)) {
            return row;
        }
    }
    return -1;
}

void KeyedListModel::reveal(int row) const {
    if (const auto paths = pathsOf(row); !paths.empty()) {
        desktop_.reveal(paths.front());
    }
}

void KeyedListModel::openFolder(int row) const {
    if (const auto paths = pathsOf(row); !paths.empty()) {
        desktop_.openFolder(paths.front().parent_path());
    }
}

void KeyedListModel::copyPath(int row) const {
    QStringList lines;
    for (const std::filesystem::path& path : pathsOf(row)) {
        lines << toQt(path.native());
    }
    if (!lines.isEmpty()) {
        QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
    }
}

const KeyedRow* KeyedListModel::rowAt(int row) const {
    if (row < 0 || row >= static_cast<int>(rows_.size())) {
        return nullptr;
    }
    const KeyedRow& found = rows_[static_cast<std::size_t>(row)];
    return found.record < 0 ? nullptr : &found;
}

void KeyedListModel::setRows(const std::vector<KeyedRow>& fresh) {
    if (std::ranges::equal(rows_, fresh, {}, &KeyedRow::key, &KeyedRow::key)) {
        rows_ = fresh; // their records may have moved
    } else {
        Places places{.fresh = fresh, .keys = RowKeys(fresh.size()), .kept = std::vector<bool>(fresh.size())};
        for (const KeyedRow& row : fresh) {
            places.keys.add(row.key);
        }
        findRecords(places);
        dropGoneRows();
        orderAs(places);
        if (rows_.size() < rows_.capacity() / 2) {
            rows_.shrink_to_fit(); // a category of thousands was folded
        }
    }
    if (!rows_.empty()) {
        Q_EMIT dataChanged(index(0), index(static_cast<int>(rows_.size()) - 1));
    }
}

/// The records have changed already: no row may look at its old place from here on.
void KeyedListModel::findRecords(Places& places) {
    for (KeyedRow& row : rows_) {
        const int place = places.keys.find(row.key);
        if (place < 0) {
            row.record = row.part = -1;
            continue;
        }
        row = places.fresh[static_cast<std::size_t>(place)];
        places.kept[static_cast<std::size_t>(place)] = true;
        ++places.keptCount;
    }
}

void KeyedListModel::dropGoneRows() {
    for (std::size_t end = rows_.size(); end > 0;) {
        if (rows_[end - 1].record >= 0) {
            --end;
            continue;
        }
        std::size_t begin = end - 1;
        while (begin > 0 && rows_[begin - 1].record < 0) {
            --begin;
        }
        beginRemoveRows({}, static_cast<int>(begin), static_cast<int>(end) - 1);
        rows_.erase(rows_.begin() + offset(begin), rows_.begin() + offset(end));
        endRemoveRows();
        end = begin;
    }
}

void KeyedListModel::orderAs(const Places& places) {
    const std::vector<KeyedRow>& fresh = places.fresh;
    if (places.keptCount > mostRowsToMoveSingly) {
        const auto place = [&](const KeyedRow& row) { return places.keys.find(row.key); };
        if (!std::ranges::is_sorted(rows_, {}, place)) {
            Q_EMIT layoutAboutToBeChanged();
            std::ranges::stable_sort(rows_, {}, place);
            Q_EMIT layoutChanged();
        }
    }
    for (std::size_t at = 0; at < fresh.size(); ++at) {
        if (at < rows_.size() && rows_[at].key == fresh[at].key) {
            continue;
        }
        if (places.kept[at]) {
            moveUp(fresh[at].key, at);
            continue;
        }
        std::size_t end = at + 1;
        while (end < fresh.size() && !places.kept[end]) {
            ++end;
        }
        beginInsertRows({}, static_cast<int>(at), static_cast<int>(end) - 1);
        rows_.insert(rows_.begin() + offset(at), fresh.begin() + offset(at), fresh.begin() + offset(end));
        endInsertRows();
    }
}

void KeyedListModel::moveUp(const RowKey& key, std::size_t to) {
    const auto from =
        std::find_if(rows_.begin() + offset(to), rows_.end(), [&](const KeyedRow& row) { return row.key == key; });
    const int source = static_cast<int>(from - rows_.begin());
    beginMoveRows({}, source, source, {}, static_cast<int>(to));
    std::rotate(rows_.begin() + offset(to), from, from + 1);
    endMoveRows();
}

} // namespace vellmoor
