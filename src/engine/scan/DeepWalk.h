// The deep walk of the scanners: over everything that the deep-scan rules admit, with every processor.
#pragma once

#include "Walk.h"
#include "scan/DeepScanFilter.h"
#include "scan/EngineContext.h"
#include "scan/Offers.h"

#include <vector>

namespace vellmoor {

/// What the workers of a walk found, each in a slot of its own, and whether it is all that there was.
template <class Found>
struct DeepWalkResult {
    /// A cache line each, so that workers do not slow each other down.
    struct alignas(64) Slot {
        Found found;
    };
    std::vector<Slot> slots;
    walk::Outcome outcome = walk::Outcome::Complete;
};

/// Hands every regular file to `onFile(entry, found)`.
template <class Found, class OnFile>
class DeepWalkVisitor final : public walk::Visitor {
public:
    using Slot = typename DeepWalkResult<Found>::Slot;

    DeepWalkVisitor(const DeepScanFilter& filter, OnFile onFile, std::vector<Slot>& slots)
        : filter_(filter),
          onFile_(std::move(onFile)),
          slots_(slots) {}

    walk::Action entry(const walk::Entry& entry, unsigned worker) override {
        if (filter_.excludesName(entry.name, entry.depth) ||
            (filter_.mayBeKept(entry.name) && filter_.isKept(entry.path()))) {
            return walk::Action::Prune;
        }
        if (entry.type == walk::EntryType::Directory) {
            return filter_.excludesFolder(entry.path()) ? walk::Action::Prune : walk::Action::Continue;
        }
        if (entry.type == walk::EntryType::File) {
            onFile_(entry, slots_[worker].found);
        }
        return walk::Action::Continue;
    }

    walk::Action directory(const walk::Directory& directory, unsigned) override {
        return filter_.marksSyncRoot(directory.names) ? walk::Action::Prune : walk::Action::Continue;
    }

private:
    const DeepScanFilter& filter_;
    OnFile onFile_;
    std::vector<Slot>& slots_;
};

/// Walks `folder`; nothing is found where the rules exclude all of it. `options` carries what the caller wants besides.
template <class Found, class OnFile>
DeepWalkResult<Found> deepWalk(EngineContext& context, const Path& folder, walk::Options options, OnFile onFile) {
    DeepWalkResult<Found> result;
    const DeepScanFilter filter(context.platform(), context.layout(), folder, keptPaths(context));
    if (filter.excludesAll()) {
        return result;
    }
    options.wantsNames = filter.wantsNames();
    options.cancelled = &context.token().flag();
    result.slots.resize(walk::workerCount(options));
    DeepWalkVisitor<Found, OnFile> visitor(filter, std::move(onFile), result.slots);
    result.outcome = walk::walk(folder, options, visitor);
    return result;
}

} // namespace vellmoor
