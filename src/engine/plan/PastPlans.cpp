#include "plan/PastPlans.h"

#include "CheckedMath.h"
#include "disk/Paths.h"

#include <map>

namespace vellmoor {
namespace {

CleanupTarget target(const Path& path, std::int64_t bytes, const FileIdentity& identity, Sameness sameness) {
    CleanupTarget made;
    made.url = path;
    made.name = displayName(path);
    made.bytes = bytes;
    made.isSelected = true;
    made.identity = identity;
    made.sameness = sameness;
    return made;
}

CleanPlan::Row row(const PastRow& past) {
    CleanPlan::Row made;
    made.item.module = past.module;
    made.item.title = past.title;
    made.item.isCleanable = true;
    made.item.isSelected = true;
    if (past.application) {
        made.item.appInfo = {.bundleIdentifier = past.identifier, .appPath = past.application->string()};
    }
    return made;
}

void add(CleanPlan& plan, CleanPlan::Row& to, CleanupTarget target) {
    plan.attempted = checkedAdd<std::int64_t>(plan.attempted, 1);
    plan.estimate = checkedAdd(plan.estimate, target.bytes);
    to.targets.push_back(std::move(target));
}

} // namespace

CleanPlan openPlan(Whereabouts& whereabouts, const PastClean& clean, const std::vector<std::size_t>& open) {
    CleanPlan plan;
    std::map<std::size_t, std::size_t> rows; // of the past, and where they stand in the plan
    for (const std::size_t index : open) {
        const PastTarget& past = clean.targets[index];
        const auto found = whereabouts.inPlace(clean, past);
        if (!found) {
            continue;
        }
        const auto [known, isNew] = rows.emplace(past.row, plan.rows.size());
        if (isNew) {
            plan.rows.push_back(row(clean.rows[past.row]));
            plan.rows.back().isFinishing = true;
        }
        const Sameness sameness = past.sameness == Sameness::Kind ? Sameness::Kind : Sameness::Content;
        add(plan, plan.rows[known->second],
            target(past.isBody ? *clean.rows[past.row].application : whereabouts.origin(clean, past), past.bytes,
                   *found, sameness));
    }
    return plan;
}

TrashedPlan trashedPlan(Whereabouts& whereabouts, const PastClean& clean) {
    TrashedPlan wanted;
    CleanPlan::Row trashed = row({.module = CleanerModule::trash, .title = "", .application = {}, .identifier = {}});
    for (std::size_t index = 0; index < clean.targets.size(); ++index) {
        const auto found = whereabouts.find(clean, clean.targets[index]);
        if (found && found->isUnchanged) { // what somebody has worked on since is not what was cleaned
            add(wanted.plan, trashed,
                target(found->place, clean.targets[index].bytes, found->identity, Sameness::File));
            wanted.indices.push_back(index);
        }
    }
    wanted.plan.rows.push_back(std::move(trashed));
    return wanted;
}

} // namespace vellmoor
