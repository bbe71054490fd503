#include "clean/CleanRecord.h"

#include "trash/TrashedPaths.h"

#include <algorithm>
#include <map>

namespace vellmoor {
namespace {

/// Puts a plan into the words of the journal. Targets of one folder have the same folders above them.
class Intents {
public:
    explicit Intents(EngineContext& context) : platform_(context.platform()), trashed_(TrashedPaths::of(context)) {
        clean_.id = Uuid::random().text();
        clean_.at = std::chrono::system_clock::now();
        clean_.run = platform_.systemRun();
        clean_.home = context.layout().home;
    }

    PastClean of(const CleanPlan& plan) && {
        std::optional<CleanerModule> module;
        for (const CleanPlan::Row& row : plan.rows) {
            if (isRecorded(row)) {
                module = module && *module != row.item.module ? CleanerModule::smartScan : row.item.module;
                add(row);
            }
        }
        clean_.module = module.value_or(CleanerModule::smartScan);
        return std::move(clean_);
    }

private:
    struct Above {
        std::optional<Path> real;
        std::vector<std::uint32_t> modes;
    };

    void add(const CleanPlan::Row& row) {
        PastRow past{.module = row.item.module, .title = row.item.title, .application = {}, .identifier = {}};
        if (row.item.appInfo) {
            past.application = row.item.appInfo->appPath;
            past.identifier = row.item.appInfo->bundleIdentifier;
        }
        clean_.rows.push_back(std::move(past));
        for (const CleanupTarget& target : row.targets) {
            clean_.targets.push_back(pastTarget(target));
            clean_.targets.back().isBody = isBody(row.item, target);
        }
    }

    PastTarget pastTarget(const CleanupTarget& target) {
        const Path path = platform_.standardized(target.url);
        const Above& above = aboveOf(path.parent_path());
        PastTarget past{.path = above.real ? *above.real / path.filename() : path,
                        .row = clean_.rows.size() - 1,
                        .identity = identityOf(target, path),
                        .sameness = target.identity ? target.sameness : Sameness::File,
                        .bytes = target.bytes,
                        .parentModes = above.modes,
                        .wasTrashed = trashed_->names(path),
                        .fate = {},
                        .place = {},
                        .reason = {}};
        addDisk(past.identity.device, path.parent_path());
        return past;
    }

    /// What is ticked by its kind alone may be another file by now: it is the one of this moment that is looked for.
    FileIdentity identityOf(const CleanupTarget& target, const Path& path) const {
        if (target.identity && target.sameness != Sameness::Kind) {
            return *target.identity;
        }
        return platform_.identity(path).value_or(target.identity.value_or(FileIdentity()));
    }

    const Above& aboveOf(const Path& folder) {
        auto known = above_.find(folder.native());
        if (known == above_.end()) {
            Above above{.real = platform_.realPath(folder), .modes = {}};
            for (Path one = above.real.value_or(""); one.has_relative_path(); one = one.parent_path()) {
                const std::optional<FileFacts> facts = platform_.facts(one);
                above.modes.push_back(facts ? facts->mode : 0700);
            }
            known = above_.emplace(folder.native(), std::move(above)).first;
        }
        return known->second;
    }

    void addDisk(std::uint64_t device, const Path& folder) {
        if (std::ranges::find(clean_.disks, device, &PastDisk::device) != clean_.disks.end()) {
            return;
        }
        if (const std::optional<Disk> disk = platform_.disk(folder)) {
            clean_.disks.push_back({.device = device, .name = disk->name, .mount = disk->mount});
        }
    }

    const Platform& platform_;
    std::unique_ptr<const TrashedPaths> trashed_;
    std::map<std::string, Above> above_; ///< by folder
    PastClean clean_;
};

} // namespace

bool isRecorded(const CleanPlan::Row& row) {
    return row.item.module != CleanerModule::memoryOptimization;
}

CleanRecord::CleanRecord(EngineContext& context, const CleanPlan& plan) {
    if (std::ranges::none_of(plan.rows, isRecorded)) {
        return;
    }
    auto begun = Journal(context.layout()).begin(Intents(context).of(plan));
    if (begun) {
        entry_.emplace(std::move(*begun));
    } else {
        problem_ = std::move(begun.error());
    }
}

CleanRecord::CleanRecord(EngineContext& context, const std::string& clean, std::vector<std::size_t> indices)
    : indices_(std::move(indices)),
      isOlder_(true) {
    if (auto resumed = Journal(context.layout()).resume(clean)) {
        entry_.emplace(std::move(*resumed)); // else the history finds out by itself what is no longer there
    }
}

void CleanRecord::did(const CleanupOutcome& outcome) {
    const std::size_t index = next_++;
    if (!entry_) {
        return;
    }
    if (!isOlder_) {
        note(entry_->did(index, outcome));
    } else if (outcome.fate == CleanupFate::Removed && index < indices_.size()) {
        note(entry_->did(indices_[index], outcome));
    }
}

void CleanRecord::end() {
    if (entry_) {
        note(isOlder_ ? entry_->sync() : entry_->end());
    }
}

void CleanRecord::note(const Outcome& written) {
    if (!written && !problem_) {
        problem_ = written.error();
    }
}

} // namespace vellmoor
