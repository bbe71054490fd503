// What Vellmoor did, so that it can be taken back: one file of JSON Lines in the state folder. What a clean is about to
// do stands on the disk before the first move, what became of it is added as it happens; a line that cannot be read
// is passed over and kept.
#pragma once

#include "CleanupReport.h"
#include "OwnFile.h"
#include "layouts/SystemLayout.h"

#include <expected>
#include <functional>
#include <string>
#include <vector>

namespace vellmoor {

/// One target of a clean of the past.
struct PastTarget {
    Path path;         ///< where it was
    std::string title; ///< of its row, as it was shown
    FileIdentity identity;
    Sameness sameness = Sameness::Content;
    std::int64_t bytes = 0;
    std::vector<std::uint32_t> parentModes; ///< permission bits of the folders above it, the nearest first
    CleanupFate fate = CleanupFate::Untried;
    Path place; ///< where it was to lie in a Trash, or lies
    std::string reason;
    bool isPutBack = false;

    bool operator==(const PastTarget&) const = default;
};

struct PastClean {
    std::string id;
    TimePoint at;
    CleanerModule module = CleanerModule::smartScan;
    std::string boot; ///< of the system's run; device numbers hold only within one
    std::vector<PastTarget> targets;
    bool isFinished = false;

    bool operator==(const PastClean&) const = default;
};

/// A login item that was switched off or on.
struct PastSwitch {
    TimePoint at;
    std::string name;
    Path file; ///< where its configuration lies since
    bool isEnabled = false;
    bool isPutBack = false;

    bool operator==(const PastSwitch&) const = default;
};

struct Past {
    std::vector<PastClean> cleans;    ///< newest first
    std::vector<PastSwitch> switches; ///< newest first
};

/// The running clean's part of the journal.
class JournalEntry {
public:
    /// What became of the target at `index` of the clean.
    [[nodiscard]] Outcome did(std::size_t index, const CleanupOutcome& outcome);
    /// The clean is over; waits for the disk.
    [[nodiscard]] Outcome end();

private:
    friend class Journal;
    JournalEntry(OwnLog log, std::string id) : log_(std::move(log)), id_(std::move(id)) {}

    OwnLog log_;
    std::string id_;
};

class Journal {
public:
    explicit Journal(const SystemLayout& layout) : file_(layout.stateFolder / "history.jsonl") {}

    /// Empty without a file; the system's reason when it cannot be read.
    [[nodiscard]] std::expected<Past, std::string> read() const;

    /// Writes what a clean is about to do and waits until the disk has it. Fails without leaving anything behind that
    /// a reader would take for a clean.
    [[nodiscard]] std::expected<JournalEntry, std::string> begin(const PastClean& clean) const;
    [[nodiscard]] Outcome addSwitch(const PastSwitch& change) const;
    [[nodiscard]] Outcome putBack(const std::string& clean, std::size_t index) const;

    /// Drops cleans that are older than `oldest`, those beyond the newest `most`, and those of which `isThere` finds
    /// nothing in a Trash any more. A clean that was cut off stays while it is younger.
    [[nodiscard]] Outcome prune(TimePoint oldest, std::size_t most,
                                const std::function<bool(const PastTarget&)>& isThere) const;
    [[nodiscard]] Outcome forget() const;

private:
    OwnFile file_;
};

} // namespace vellmoor
