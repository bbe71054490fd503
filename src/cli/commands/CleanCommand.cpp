#include "CheckedMath.h"
#include "Json.h"
#include "applications/AppUninstaller.h"
#include "commands/CliCommands.h"
#include "commands/ModuleScan.h"
#include "commands/RowChoice.h"
#include "done/CleanupReport.h"
#include "found/ScanSnapshot.h"
#include "service/SystemCleanerService.h"
#include "shown/Output.h"
#include "shown/ProgressLine.h"
#include "shown/ShownWork.h"
#include "shown/Stop.h"
#include "texts/ByteCount.h"

#include <algorithm>
#include <chrono>
#include <iostream>
#include <map>
#include <utility>
#include <vector>

namespace vellmoor::cli {
namespace {

using terminal::Json;

/// Speaks another language while it lives.
class OtherLanguage {
public:
    OtherLanguage() : own_(L::language()) {
        L::setLanguage(own_ == AppLanguage::chinese ? AppLanguage::english : AppLanguage::chinese);
    }
    ~OtherLanguage() { L::setLanguage(own_); }
    OtherLanguage(const OtherLanguage&) = delete;
    OtherLanguage& operator=(const OtherLanguage&) = delete;

private:
    AppLanguage own_;
};

/// Titles are built while a scan runs, so those of the other language take another scan.
std::map<std::string, std::string> titlesInOtherLanguage(const terminal::OwnSystem& own, CleanerModule module) {
    const OtherLanguage other;
    std::map<std::string, std::string> titles;
    for (const CleanupItem& row : scanned(own, module, true).cleanupItems) {
        titles.emplace(row.key, row.title);
    }
    return titles;
}

bool goesForGood(EngineContext& context, const CleanupItem& row) {
    return row.module == CleanerModule::trash || (row.appInfo && isFlatpakBody(context, row.appInfo->appPath));
}

std::expected<ChosenRows, std::string> chosenRows(const terminal::OwnSystem& own, const Call& call) {
    EngineContext context(*own.platform, own.layout, std::chrono::system_clock::now());
    const RowFacts facts{.otherTitles = [&] { return titlesInOtherLanguage(own, call.module); },
                         .goesForGood = [&](const CleanupItem& row) { return goesForGood(context, row); }};
    return chooseRows(call, scanned(own, call.module, call.isQuiet).cleanupItems, facts);
}

void hintAt(const ChosenRows& chosen) {
    if (chosen.leftForGood) {
        complain(L::tr("废纸篓中的项目未清理：永久删除需要 --for-good"));
    }
    if (chosen.leftMemory) {
        complain(L::tr("内存未整理：需要 --memory"));
    }
}

/// The rows with nothing but what would go.
std::vector<CleanupItem> tickedOnly(std::vector<CleanupItem> rows) {
    for (CleanupItem& row : rows) {
        row.bytes = row.selectedBytes();
        row.files = row.selectedFiles();
        row.targets = row.selectedTargets();
    }
    return rows;
}

ExitStatus showPlan(const terminal::OwnSystem& own, const Call& call, const std::vector<CleanupItem>& rows) {
    if (call.wantsJson) {
        std::cout << terminal::text(Json{{"isDryRun", true}, {"cleanupItems", terminal::json(tickedOnly(rows))}})
                  << '\n';
        return ExitStatus::Done;
    }
    EngineContext context(*own.platform, own.layout, std::chrono::system_clock::now());
    std::int64_t bytes = 0;
    for (const CleanupItem& row : tickedOnly(rows)) {
        bytes = checkedAdd(bytes, row.bytes);
        const bool isMemory = row.module == CleanerModule::memoryOptimization;
        const char* what = isMemory                    ? "释放：%@"
                           : goesForGood(context, row) ? "永久删除，无法恢复：%@"
                                                       : "移到废纸篓：%@";
        std::cout << L::tr(what, row.title) << " · " << row.sizeText() << '\n';
        for (const CleanupTarget& target : row.targets) {
            std::cout << "  " << (isMemory ? target.name : shown(target.url)) << "  " << target.sizeText() << '\n';
        }
    }
    std::cout << L::tr("将处理 %@，未改动任何文件。", byteCountText(bytes)) << '\n';
    return ExitStatus::Done;
}

void tellOutcomes(const CleanupReport& report) {
    const auto isFailed = [](const CleanupOutcome& outcome) { return outcome.fate == CleanupFate::Failed; };
    if (std::ranges::none_of(report.outcomes, isFailed)) { // another clean runs, or the memory stayed
        std::ranges::for_each(report.failures, complain);
    }
    for (const CleanupOutcome& outcome : report.outcomes) {
        if (outcome.fate == CleanupFate::Failed || outcome.fate == CleanupFate::Kept) {
            complain(shown(outcome.path) + ": " + outcome.reason);
        }
    }
}

/// What the one line of the report leaves open: a move to the Trash frees nothing.
void tellSums(const CleanupReport& report) {
    if (report.removedBytes > 0) {
        std::cout << L::tr("永久删除 %@。", byteCountText(report.removedBytes)) << '\n';
    }
    if (report.freedNow && *report.freedNow > 0) {
        const char* freed = report.freedNowMayGrow ? "到目前为止磁盘空出 %@。" : "磁盘现已空出 %@。";
        std::cout << L::tr(freed, byteCountText(*report.freedNow)) << '\n';
    }
    if (report.trashedCount > 0 && !report.historyId.empty()) {
        std::cout << L::tr("废纸篓中 %@，仍占用磁盘；放回：vellmoor-cli put-back %@",
                           byteCountText(report.trashedBytes), report.historyId.substr(0, shortId))
                  << '\n';
    }
}

ExitStatus statusOf(const CleanupReport& report) {
    if (!report.failures.empty() || report.wasStopped) {
        return ExitStatus::Failed;
    }
    return report.removedCount > 0 ? ExitStatus::Done : ExitStatus::NothingToDo;
}

ExitStatus cleanRows(const terminal::OwnSystem& own, const Call& call, const std::vector<CleanupItem>& rows) {
    SystemCleanerService service(*own.platform, own.layout);
    if (const auto reason = service.whyNoWayBack(rows)) {
        complain(*reason); // before it runs
    }
    ProgressLine line(call.isQuiet);
    const CleanupReport report = service.clean(rows, showingOn(line, L::tr("正在清理")), stopOnSignals());
    line.clear();
    if (call.wantsJson) {
        std::cout << terminal::text(terminal::json(report)) << '\n';
        return statusOf(report);
    }
    tellOutcomes(report);
    std::cout << report.message() << '\n';
    tellSums(report);
    return statusOf(report);
}

} // namespace

ExitStatus runClean(const terminal::OwnSystem& own, const Call& call) {
    if (!call.isDryRun) {
        SystemCleanerService(*own.platform, own.layout).recover();
    }
    const auto chosen = chosenRows(own, call);
    if (!chosen) {
        return fail(chosen.error(), ExitStatus::WrongCall);
    }
    hintAt(*chosen);
    if (chosen->rows.empty()) {
        return fail(L::tr("没有可清理的项目"), ExitStatus::NothingToDo);
    }
    return call.isDryRun ? showPlan(own, call, chosen->rows) : cleanRows(own, call, chosen->rows);
}

} // namespace vellmoor::cli
