// What Vellmoor did, so that it can be taken back: one file of JSON Lines in the state folder. What a clean is about to
// do stands on the disk before the first move, what became of it is added as it happens; a line that cannot be read
// is passed over and kept.
#pragma once

#include "disk/OwnFile.h"
#include "done/CleanupReport.h"
#include "found/SharedPath.h"
#include "layouts/SystemLayout.h"

#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vellmoor {

/// A row of a clean of the past.
struct PastRow {
    CleanerModule module = CleanerModule::smartScan;
    std::string title;               ///< as it was shown
    std::optional<Path> application; ///< of the App Uninstaller: the application itself
    std::optional<std::string> identifier;

    bool operator==(const PastRow&) const = default;
};

/// A disk that a clean touched, by what it is known again.
struct PastDisk {
    std::uint64_t device = 0; ///< within that run of the system
    std::string name;         ///< its file system's UUID; empty without one
    Path mount;

    bool operator==(const PastDisk&) const = default;
};

/// One target of a clean of the past.
struct PastTarget {
    SharedPath path;     ///< where it was, without links above it
    std::size_t row = 0; ///< among those of its clean
    FileIdentity identity;
    Sameness sameness = Sameness::Content;
    std::int64_t bytes = 0;
    std::vector<std::uint32_t> parentModes; ///< permission bits of the folders above it, the nearest first
    bool wasTrashed = false;                ///< it lay in a Trash: it was to go for good
    bool isBody = false;                    ///< the application itself, in its row
    std::optional<CleanupFate> fate;        ///< nothing: the clean ended before that was written
    SharedPath place;                       ///< where it lies in a Trash
    std::string reason;
    bool isPutBack = false;
    bool isRepeated = false; ///< the same path stands in another row of the clean before

    bool operator==(const PastTarget&) const = default;
};

struct PastClean {
    std::string id;
    TimePoint at;
    CleanerModule module = CleanerModule::smartScan;
    std::string run; ///< of the system; device numbers hold only within one
    Path home;       ///< of the user, as it was then
    std::vector<PastDisk> disks;
    std::vector<PastRow> rows;
    std::vector<PastTarget> targets;
    bool isFinished = false;
    bool isSettled = false; ///< the user took what was open back, or finished it

    bool operator==(const PastClean&) const = default;
};

/// A login item that was switched off or on.
struct PastSwitch {
    TimePoint at;
    std::string name;
    Path file; ///< where its configuration lies since
    bool isEnabled = false;

    bool operator==(const PastSwitch&) const = default;
};

struct Past {
    std::vector<PastClean> cleans;    ///< newest first
    std::vector<PastSwitch> switches; ///< newest first
};

/// One clean's part of the journal, for what happens to it.
class JournalEntry {
public:
    [[nodiscard]] const std::string& id() const { return id_; }

    /// What became of the target at `index` of the clean.
    [[nodiscard]] Outcome did(std::size_t index, const CleanupOutcome& outcome);
    /// It is in its place again.
    [[nodiscard]] Outcome putBack(std::size_t index);
    /// The clean is over; waits for the disk.
    [[nodiscard]] Outcome end();
    /// What was open of the clean is no longer; waits for the disk.
    [[nodiscard]] Outcome settle();
    /// Waits for the disk.
    [[nodiscard]] Outcome sync() { return log_.sync(); }

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
    /// Whether it can be read and added to; the system's reason.
    [[nodiscard]] Outcome check() const;

    /// Writes what a clean is about to do and waits until the disk has it. Fails without leaving anything behind that
    /// a reader would take for a clean.
    [[nodiscard]] std::expected<JournalEntry, std::string> begin(const PastClean& clean) const;
    /// For what happens later to a clean that is there.
    [[nodiscard]] std::expected<JournalEntry, std::string> resume(const std::string& clean) const;
    [[nodiscard]] Outcome addSwitch(const PastSwitch& change) const;

    /// Drops cleans and switches that are older than `oldest`, cleans beyond the newest `most`, and those that
    /// `isOver` names.
    [[nodiscard]] Outcome prune(TimePoint oldest, std::size_t most,
                                const std::function<bool(const PastClean&)>& isOver) const;
    [[nodiscard]] Outcome forget() const;

private:
    OwnFile file_;
};

} // namespace vellmoor
