#include "clean/Cleaning.h"

#include "clean/CleanRecord.h"
#include "clean/CleanRun.h"
#include "disk/Paths.h"
#include "disk/PosixFiles.h"
#include "history/CleanLock.h"
#include "history/HistoryList.h"
#include "history/Journal.h"
#include "history/PastState.h"
#include "history/Whereabouts.h"
#include "plan/CleanPlan.h"
#include "plan/PastPlans.h"

#include <algorithm>
#include <cerrno>

namespace vellmoor {
namespace {

/// Nothing was done, for one reason.
CleanupReport refused(const CleanPlan& plan, std::string reason) {
    CleanupReport report;
    report.attemptedCount = plan.attempted;
    report.untriedCount = plan.attempted;
    report.freedBytes = plan.estimate;
    report.failedCount = 1;
    for (const CleanPlan::Row& row : plan.rows) {
        for (const CleanupTarget& target : row.targets) {
            report.outcomes.push_back({.path = target.url,
                                       .fate = CleanupFate::Untried,
                                       .place = {},
                                       .bytes = target.bytes,
                                       .identity = target.identity,
                                       .reason = reason});
        }
    }
    report.failures.push_back(std::move(reason));
    return report;
}

CleanupReport run(EngineContext& context, const CleanPlan& plan, std::chrono::milliseconds settle,
                  const CleanProgressCallback& progress) {
    pruneHistory(context);
    CleanRun cleaning(context, settle, progress); // opens the Trash folders: where they cannot be, nothing is recorded
    CleanRecord record(context, plan);
    return cleaning.run(plan, record);
}

/// Does something about a clean of the past, under the lock.
template <class Deed>
CleanupReport withPast(EngineContext& context, const std::string& id, const Deed& deed) {
    const auto lock = CleanLock::take(context.layout());
    if (!lock) {
        return refused({}, lock.error());
    }
    const auto past = Journal(context.layout()).read();
    if (!past) {
        return refused({}, past.error());
    }
    const auto clean = std::ranges::find(past->cleans, id, &PastClean::id);
    return clean == past->cleans.end() ? refused({}, L::tr("历史记录中没有这次清理")) : deed(*clean);
}

CleanupReport completed(CleanupReport report) {
    report.completedAt = std::chrono::system_clock::now();
    return report;
}

} // namespace

CleanupReport clean(EngineContext& context, const std::vector<CleanupItem>& items, std::chrono::milliseconds settle,
                    const CleanProgressCallback& progress) {
    const CleanPlan plan = cleanPlan(items);
    if (plan.rows.empty()) {
        return completed({});
    }
    const auto lock = CleanLock::take(context.layout());
    return completed(lock ? run(context, plan, settle, progress) : refused(plan, lock.error()));
}

CleanupReport finishClean(EngineContext& context, const std::string& clean, const CleanProgressCallback& progress) {
    return completed(withPast(context, clean, [&](const PastClean& past) {
        Whereabouts whereabouts(context);
        const CleanPlan plan = openPlan(whereabouts, past, stateOf(whereabouts, past).open);
        CleanupReport report = plan.rows.empty() ? CleanupReport() : run(context, plan, memorySettles, progress);
        if (!report.wasStopped) {
            if (auto entry = Journal(context.layout()).resume(clean)) {
                (void)entry->settle(); // else it is offered once more, with nothing left to do
            }
        }
        return report;
    }));
}

CleanupReport removeForGood(EngineContext& context, const std::string& clean, const CleanProgressCallback& progress) {
    return completed(withPast(context, clean, [&](const PastClean& past) {
        Whereabouts whereabouts(context);
        TrashedPlan wanted = trashedPlan(whereabouts, past);
        CleanRun cleaning(context, memorySettles, progress);
        CleanRecord record(context, clean, std::move(wanted.indices));
        return cleaning.run(wanted.plan, record);
    }));
}

std::optional<std::string> whyNoWayBack(const EngineContext& context, const std::vector<CleanupItem>& items) {
    constexpr std::int64_t bytesOfTarget = 2048; // of the journal, plentifully
    const auto trashed = TrashedPaths::of(context);
    std::int64_t count = 0;
    for (const CleanPlan::Row& row : cleanPlan(items).rows) {
        if (isRecorded(row)) {
            count += std::ranges::count_if(row.targets, [&](const CleanupTarget& target) {
                return !trashed->names(context.platform().standardized(target.url));
            });
        }
    }
    if (count == 0) {
        return std::nullopt;
    }
    const Outcome checked = Journal(context.layout()).check();
    if (!checked) {
        return L::tr("无法撤销此次清理：%@", checked.error());
    }
    const std::optional<Capacity> room = context.platform().capacity(context.layout().stateFolder);
    if (room && room->availableBytes < bytesOfTarget * (count + 1)) {
        return L::tr("无法撤销此次清理：%@", files::reason(ENOSPC));
    }
    return std::nullopt;
}

} // namespace vellmoor
