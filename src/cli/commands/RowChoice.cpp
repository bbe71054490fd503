#include "commands/RowChoice.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

namespace vellmoor::cli {
namespace {

using Wrong = std::unexpected<std::string>;
using Positions = std::vector<std::size_t>;

Positions positionsOf(const std::vector<CleanupItem>& rows, const std::function<bool(const CleanupItem&)>& isIt) {
    Positions found;
    for (std::size_t index = 0; index < rows.size(); ++index) {
        if (!rows[index].key.empty() && isIt(rows[index])) {
            found.push_back(index);
        }
    }
    return found;
}

/// Looks words up: as a key, as a title, as a title in the other language.
class Naming {
public:
    Naming(const std::vector<CleanupItem>& rows, const RowFacts& facts) : rows_(rows), facts_(facts) {}

    std::expected<std::size_t, std::string> rowNamed(const std::string& word) {
        Positions found = positionsOf(rows_, [&](const CleanupItem& row) { return row.key == word; });
        if (found.empty()) {
            found = positionsOf(rows_, [&](const CleanupItem& row) { return row.title == word; });
        }
        if (found.empty()) {
            found = positionsOf(rows_, [&](const CleanupItem& row) { return otherTitle(row) == word; });
        }
        if (found.empty()) {
            return Wrong(L::tr("没有名为“%@”的行", word));
        }
        if (found.size() > 1) {
            return Wrong(L::tr("有 %d 行名为“%@”，请用键名", found.size(), word));
        }
        return found.front();
    }

private:
    std::string otherTitle(const CleanupItem& row) {
        if (!titles_) {
            titles_ = facts_.otherTitles();
        }
        const auto known = titles_->find(row.key);
        return known == titles_->end() ? std::string() : known->second;
    }

    const std::vector<CleanupItem>& rows_;
    const RowFacts& facts_;
    std::optional<std::map<std::string, std::string>> titles_;
};

bool isMemory(const CleanupItem& row) {
    return row.module == CleanerModule::memoryOptimization;
}

/// Why a row that the call names cannot be cleaned by it.
std::optional<std::string> refusal(const Call& call, const CleanupItem& row, const RowFacts& facts) {
    if (!row.isCleanable) {
        return L::tr("“%@”不能清理：%@", row.title, row.description);
    }
    if (isMemory(row) && !call.mayFreeMemory) {
        return L::tr("“%@”需要 --memory", row.title);
    }
    if (facts.goesForGood(row) && !call.mayRemoveForGood) {
        return L::tr("“%@”会被永久删除，需要 --for-good", row.title);
    }
    return std::nullopt;
}

/// Whether a row that nobody named is cleaned.
bool isTaken(const Call& call, const CleanupItem& row, const RowFacts& facts, ChosenRows& chosen) {
    if (call.onlyTicked || !row.isSelected || !row.isCleanable || row.risk != CleanupRisk::safe) {
        return false;
    }
    if (isMemory(row) && !call.mayFreeMemory) {
        chosen.leftMemory = true;
        return false;
    }
    if (facts.goesForGood(row) && !call.mayRemoveForGood) {
        chosen.leftForGood = true;
        return false;
    }
    return true;
}

} // namespace

std::expected<ChosenRows, std::string> chooseRows(const Call& call, std::vector<CleanupItem> rows,
                                                  const RowFacts& facts) {
    std::set<std::size_t> named;
    Naming naming(rows, facts);
    for (const std::string& word : call.ticks) {
        const auto position = naming.rowNamed(word);
        if (!position) {
            return Wrong(position.error());
        }
        if (auto reason = refusal(call, rows[*position], facts)) {
            return Wrong(*std::move(reason));
        }
        named.insert(*position);
    }
    ChosenRows chosen;
    for (std::size_t index = 0; index < rows.size(); ++index) {
        CleanupItem& row = rows[index];
        if (named.contains(index)) {
            row.selectAll(true);
        } else if (!isTaken(call, row, facts, chosen)) {
            continue;
        }
        if (row.selectedTargetCount() > 0) {
            chosen.rows.push_back(std::move(row));
        }
    }
    return chosen;
}

} // namespace vellmoor::cli
