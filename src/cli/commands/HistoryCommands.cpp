#include "Json.h"
#include "TextTable.h"
#include "commands/CliCommands.h"
#include "done/History.h"
#include "done/RestoreReport.h"
#include "service/SystemCleanerService.h"
#include "shown/Output.h"
#include "shown/ProgressLine.h"
#include "shown/ShownWork.h"
#include "shown/Stop.h"
#include "texts/ByteCount.h"

#include <algorithm>
#include <chrono>
#include <expected>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

namespace vellmoor::cli {
namespace {

std::string stateText(const HistoryClean& clean) {
    switch (clean.state) {
    case HistoryState::CutOff:
        return L::tr("未完成");
    case HistoryState::LeftoversStayed:
        return L::tr("残留未清理");
    case HistoryState::Finished:
        break;
    }
    return "";
}

std::string when(const terminal::OwnSystem& own, TimePoint at) {
    return own.platform->relativeDate(at, std::chrono::system_clock::now(), L::language());
}

/// The cleans that `word` names by the beginning of their ids; without a word the newest that can be put back.
std::expected<const HistoryClean*, ExitStatus> cleanNamed(const History& history, const std::string& word) {
    if (word.empty()) {
        const HistoryClean* newest = nullptr;
        for (const HistoryClean& clean : history.cleans) {
            if (clean.trashedCount > 0 && (newest == nullptr || clean.at > newest->at)) {
                newest = &clean;
            }
        }
        if (newest == nullptr) {
            return std::unexpected(fail(L::tr("没有可放回的项目"), ExitStatus::NothingToDo));
        }
        return newest;
    }
    std::vector<const HistoryClean*> found;
    for (const HistoryClean& clean : history.cleans) {
        if (clean.id.starts_with(word)) {
            found.push_back(&clean);
        }
    }
    if (found.size() != 1) {
        return std::unexpected(
            fail(found.empty() ? L::tr("历史记录中没有 %@", word) : L::tr("有 %d 次清理以 %@ 开头", found.size(), word),
                 ExitStatus::WrongCall));
    }
    return found.front();
}

bool isInTrash(const HistoryItem& item) {
    return !item.place.empty();
}

ExitStatus showPutBack(const Call& call, const HistoryClean& clean) {
    std::vector<HistoryItem> items;
    std::ranges::copy_if(clean.items.all(), std::back_inserter(items), isInTrash);
    if (call.wantsJson) {
        std::cout << terminal::text(
                         terminal::Json{{"isDryRun", true}, {"id", clean.id}, {"items", terminal::json(items)}})
                  << '\n';
        return ExitStatus::Done;
    }
    for (const HistoryItem& item : items) {
        std::cout << shown(item.path) << "  " << byteCountText(item.bytes) << '\n';
    }
    std::cout << L::tr("将放回 %d 项，未改动任何文件。", items.size()) << '\n';
    return ExitStatus::Done;
}

ExitStatus statusOf(const RestoreReport& report) {
    if (report.failedCount > 0 || report.untriedCount > 0) {
        return ExitStatus::Failed;
    }
    return report.restoredCount > 0 ? ExitStatus::Done : ExitStatus::NothingToDo;
}

ExitStatus tell(const Call& call, const RestoreReport& report) {
    if (call.wantsJson) {
        std::cout << terminal::text(terminal::json(report)) << '\n';
        return statusOf(report);
    }
    for (const RestoreOutcome& outcome : report.outcomes) {
        if (outcome.fate != RestoreFate::Restored && !outcome.reason.empty()) {
            complain(shown(outcome.path) + ": " + outcome.reason);
        }
    }
    const auto isTold = [](const RestoreOutcome& outcome) { return !outcome.reason.empty(); };
    if (std::ranges::none_of(report.outcomes, isTold)) { // another clean runs
        std::ranges::for_each(report.failures, complain);
    }
    std::cout << report.message() << '\n';
    return statusOf(report);
}

} // namespace

ExitStatus runHistory(const terminal::OwnSystem& own, const Call& call) {
    SystemCleanerService service(*own.platform, own.layout);
    const History history = service.history();
    if (!history.problem.empty()) {
        return fail(history.problem);
    }
    if (call.wantsJson) {
        std::cout << terminal::text(terminal::json(history)) << '\n';
        return ExitStatus::Done;
    }
    using terminal::Side;
    terminal::TextTable table({{Side::Left, shortId},
                               {Side::Left, 24},
                               {Side::Left, 24},
                               {Side::Right, 16},
                               {Side::Right, 12},
                               {Side::Left, 40},
                               {Side::Left, 24}});
    for (const HistoryClean& clean : history.cleans) {
        const std::string inTrash = L::tr("废纸篓中 %d 项，%@", clean.trashedCount, byteCountText(clean.trashedBytes));
        table.add({clean.id.substr(0, shortId), when(own, clean.at), title(clean.module),
                   L::tr("%d 项", clean.movedCount), byteCountText(clean.movedBytes),
                   clean.trashedCount > 0 ? inTrash : "", stateText(clean)});
    }
    for (const std::string& line : table.lines()) {
        std::cout << line << '\n';
    }
    return ExitStatus::Done;
}

ExitStatus runPutBack(const terminal::OwnSystem& own, const Call& call) {
    SystemCleanerService service(*own.platform, own.layout);
    if (!call.isDryRun) {
        service.recover();
    }
    const History history = service.history();
    if (!history.problem.empty()) {
        return fail(history.problem);
    }
    const auto clean = cleanNamed(history, call.clean);
    if (!clean) {
        return clean.error();
    }
    if (std::ranges::none_of((*clean)->items.all(), isInTrash)) {
        return fail(L::tr("没有可放回的项目"), ExitStatus::NothingToDo);
    }
    if (call.isDryRun) {
        return showPutBack(call, **clean);
    }
    ProgressLine line(call.isQuiet);
    const RestoreReport report = service.putBack((*clean)->id, {}, showingOn(line, L::tr("正在放回")), stopOnSignals());
    line.clear();
    return tell(call, report);
}

} // namespace vellmoor::cli
