#include "restore/Restore.h"

#include "CheckedMath.h"
#include "clean/Recovery.h"
#include "clean/WorkProgress.h"
#include "disk/Paths.h"
#include "history/CleanLock.h"
#include "history/HistoryList.h"
#include "history/Journal.h"
#include "history/Whereabouts.h"
#include "scan/PathMeasurement.h"
#include "trash/CleanPlaces.h"

#include <algorithm>
#include <expected>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <utility>

namespace vellmoor {
namespace {

/// One item on its way back.
struct Job {
    ReturnRequest request;
    TrashFolder trash;
    std::int64_t bytes = 0;
    std::string clean; ///< in whose history it stands; empty: in none
    std::size_t index = 0;
};

std::string reasonOf(const Return& answer) {
    switch (answer.result) {
    case ReturnResult::NameTaken:
        return L::tr("原位置已有同名项目，仍在废纸篓中");
    case ReturnResult::Changed:
        return L::tr("废纸篓中的项目已更改，仍在废纸篓中");
    case ReturnResult::Vanished:
        return L::tr("已不在废纸篓中");
    case ReturnResult::Done:
    case ReturnResult::Failed:
        break;
    }
    return answer.reason;
}

RestoreFate fateOf(ReturnResult result) {
    switch (result) {
    case ReturnResult::Done:
        return RestoreFate::Restored;
    case ReturnResult::NameTaken:
        return RestoreFate::NameTaken;
    case ReturnResult::Changed:
        return RestoreFate::Changed;
    case ReturnResult::Vanished:
        return RestoreFate::Vanished;
    case ReturnResult::Failed:
        break;
    }
    return RestoreFate::Failed;
}

RestoreReport refused(std::string reason) {
    RestoreReport report;
    report.failedCount = 1;
    report.failures.push_back(std::move(reason));
    return report;
}

/// Carries out jobs, counts what became of them, and tells the history.
class Restoring {
public:
    explicit Restoring(EngineContext& context) : context_(context), journal_(context.layout()) {}

    /// What is known beforehand not to go.
    void addFailure(Path path, Path place, std::int64_t bytes, RestoreFate fate, std::string reason) {
        count({.path = std::move(path),
               .place = std::move(place),
               .fate = fate,
               .bytes = bytes,
               .reason = std::move(reason)});
    }
    void add(Job job) { jobs_.push_back(std::move(job)); }

    RestoreReport run(const CleanProgressCallback& tell) {
        // A folder before what lay in it: made again on the way, it would be in its own way.
        std::ranges::sort(jobs_, {}, [](const Job& job) -> const Path& { return job.request.path; });
        const PathGuard guard(context_.platform(), context_.layout());
        const auto trashed = TrashedPaths::of(context_);
        const auto session = context_.platform().trashSession(cleanPlaces(context_, *trashed, guard));
        recoverCutOff(context_, *session);
        WorkProgress progress(tell, std::ssize(jobs_), bytesOfAll());
        for (const Job& job : jobs_) {
            progress.begin(job.request.path);
            putBack(*session, job);
            progress.done(job.bytes);
        }
        session->finish();
        for (auto& [clean, entry] : entries_) {
            (void)entry.sync(); // what is back is back, whatever the history knows of it
        }
        progress.end();
        report_.wasStopped = context_.isCancelled() && report_.untriedCount > 0;
        return std::move(report_);
    }

private:
    [[nodiscard]] std::int64_t bytesOfAll() const {
        std::int64_t sum = 0;
        for (const Job& job : jobs_) {
            sum = checkedAdd(sum, job.bytes);
        }
        return sum;
    }

    void putBack(TrashSession& session, const Job& job) {
        RestoreOutcome outcome{.path = job.request.path,
                               .place = job.request.place,
                               .fate = RestoreFate::Untried,
                               .bytes = job.bytes,
                               .reason = ""};
        if (!context_.isCancelled()) {
            const Return answer = session.putBack(job.request, job.trash);
            outcome.fate = fateOf(answer.result);
            outcome.reason = reasonOf(answer);
            if (answer.result == ReturnResult::Done && !job.clean.empty()) {
                remember(job);
            }
        }
        count(std::move(outcome));
    }

    void remember(const Job& job) {
        auto known = entries_.find(job.clean);
        if (known == entries_.end()) {
            auto entry = journal_.resume(job.clean);
            if (!entry) {
                return; // the history finds out by itself that it is no longer in the Trash
            }
            known = entries_.emplace(job.clean, std::move(*entry)).first;
        }
        (void)known->second.putBack(job.index); // likewise
    }

    void count(RestoreOutcome outcome) {
        ++report_.attemptedCount;
        if (outcome.fate == RestoreFate::Restored) {
            ++report_.restoredCount;
            report_.restoredBytes = checkedAdd(report_.restoredBytes, outcome.bytes);
        } else if (outcome.fate == RestoreFate::Untried) {
            ++report_.untriedCount;
        } else {
            ++report_.failedCount;
            if (report_.failures.size() < mostFailureLines) {
                report_.failures.push_back(displayName(outcome.path) + ": " + outcome.reason);
            }
        }
        report_.outcomes.push_back(std::move(outcome));
    }

    EngineContext& context_;
    Journal journal_;
    std::map<std::string, JournalEntry> entries_;
    std::vector<Job> jobs_;
    RestoreReport report_;
};

Job jobOf(Whereabouts& whereabouts, const PastClean& clean, std::size_t index, const Whereabouts::Trashed& found) {
    const PastTarget& target = clean.targets[index];
    return {.request = {.place = found.place,
                        .identity = found.identity,
                        .path = whereabouts.origin(clean, target),
                        .parentModes = target.parentModes},
            .trash = found.trash,
            .bytes = target.bytes,
            .clean = clean.id,
            .index = index};
}

/// What cleans of the history have put into a Trash, by its place there.
std::map<Path, Job> jobsOfHistory(Whereabouts& whereabouts, const Past& past, const std::vector<Path>& places) {
    const std::set<Path> wanted(places.begin(), places.end());
    std::map<Path, Job> jobs;
    for (const PastClean& clean : past.cleans) {
        for (std::size_t index = 0; index < clean.targets.size(); ++index) {
            const auto found = whereabouts.find(clean, clean.targets[index]);
            if (found && wanted.contains(found->place)) {
                jobs.emplace(found->place, jobOf(whereabouts, clean, index, *found));
            }
        }
    }
    return jobs;
}

RestoreReport completed(RestoreReport report) {
    report.completedAt = std::chrono::system_clock::now();
    return report;
}

} // namespace

RestoreReport putBack(EngineContext& context, const std::string& clean, const std::vector<std::size_t>& indices,
                      const CleanProgressCallback& progress) {
    const auto lock = CleanLock::take(context.layout());
    if (!lock) {
        return completed(refused(lock.error()));
    }
    const Journal journal(context.layout());
    const auto past = journal.read();
    if (!past) {
        return completed(refused(past.error()));
    }
    const auto known = std::ranges::find(past->cleans, clean, &PastClean::id);
    if (known == past->cleans.end()) {
        return completed(refused(L::tr("历史记录中没有这次清理")));
    }
    Whereabouts whereabouts(context);
    Restoring work(context);
    const std::set<std::size_t> asked(indices.begin(), indices.end());
    for (std::size_t index = 0; index < known->targets.size(); ++index) {
        const bool isAsked = asked.contains(index);
        if (!indices.empty() && !isAsked) {
            continue;
        }
        const PastTarget& target = known->targets[index];
        if (const auto found = whereabouts.find(*known, target)) {
            work.add(jobOf(whereabouts, *known, index, *found));
        } else if (isAsked) {
            work.addFailure(whereabouts.origin(*known, target), {}, target.bytes, RestoreFate::Vanished,
                            L::tr("已不在废纸篓中"));
        }
    }
    RestoreReport report = work.run(progress);
    if (indices.empty() && !report.wasStopped) {
        if (auto entry = journal.resume(clean)) {
            (void)entry->settle(); // else it is offered once more, with nothing left to do
        }
    }
    pruneHistory(context);
    return completed(std::move(report));
}

RestoreReport putBackTrashed(EngineContext& context, const std::vector<Path>& places,
                             const CleanProgressCallback& progress) {
    const auto lock = CleanLock::take(context.layout());
    if (!lock) {
        return completed(refused(lock.error()));
    }
    const Past past = Journal(context.layout()).read().value_or(Past());
    Whereabouts whereabouts(context);
    std::map<Path, Job> known = jobsOfHistory(whereabouts, past, places);
    Restoring work(context);
    const std::vector<TrashSource> sources = trashSources(context);
    for (const Path& place : places) {
        if (const auto job = known.find(place); job != known.end()) {
            work.add(std::move(job->second));
            continue;
        }
        const auto source = std::ranges::find_if(
            sources, [&](const TrashSource& one) { return one.trash.contents == place.parent_path(); });
        const auto origin = source == sources.end() ? std::nullopt : trashedOrigin(context, source->trash, place);
        const auto identity = context.platform().identity(place);
        if (!origin || !identity) {
            const bool isGone = !context.platform().exists(place);
            work.addFailure(origin.value_or(place), place, 0, isGone ? RestoreFate::Vanished : RestoreFate::Failed,
                            isGone ? L::tr("已不在废纸篓中") : L::tr("没有有效的回收记录，仍在废纸篓中"));
            continue;
        }
        work.add({.request = {.place = place, .identity = *identity, .path = *origin, .parentModes = {}},
                  .trash = source->trash,
                  .bytes = stats(context, place).bytes,
                  .clean = {},
                  .index = 0});
    }
    RestoreReport report = work.run(progress);
    pruneHistory(context);
    return completed(std::move(report));
}

} // namespace vellmoor
