#include "history/Journal.h"

#include "history/JournalLines.h"

#include <set>
#include <utility>

namespace vellmoor {
namespace {

Outcome appendAndSync(OwnLog& log, const std::string& lines) {
    const Outcome written = log.append(lines);
    return written ? log.sync() : written;
}

} // namespace

Outcome JournalEntry::did(std::size_t index, const CleanupOutcome& outcome) {
    return log_.append(factLine(index, id_, outcome));
}

Outcome JournalEntry::putBack(std::size_t index) {
    return log_.append(eventLine("back", id_, index));
}

Outcome JournalEntry::end() {
    return appendAndSync(log_, eventLine("end", id_));
}

Outcome JournalEntry::settle() {
    return appendAndSync(log_, eventLine("settled", id_));
}

std::expected<Past, std::string> Journal::read() const {
    const auto text = file_.read();
    if (!text) {
        return std::unexpected(text.error());
    }
    return pastOf(*text);
}

Outcome Journal::check() const {
    if (const auto text = file_.read(); !text) {
        return std::unexpected(text.error());
    }
    const auto log = OwnLog::open(file_.path());
    return log ? Outcome() : std::unexpected(log.error());
}

std::expected<JournalEntry, std::string> Journal::begin(const PastClean& clean) const {
    auto log = OwnLog::open(file_.path());
    if (!log) {
        return std::unexpected(log.error());
    }
    std::string text = cleanLine(clean);
    for (std::size_t index = 0; index < clean.targets.size(); ++index) {
        text += wantLine(index, clean.id, clean.targets[index]);
    }
    // All of it or nothing: a header without its targets is no clean to a reader.
    if (const Outcome written = log->append(text); !written) {
        return std::unexpected(written.error());
    }
    if (const Outcome synced = log->sync(); !synced) {
        (void)log->append(eventLine("end", clean.id)); // nothing will be moved under this name
        return std::unexpected(synced.error());
    }
    return JournalEntry(std::move(*log), clean.id);
}

std::expected<JournalEntry, std::string> Journal::resume(const std::string& clean) const {
    auto log = OwnLog::open(file_.path());
    if (!log) {
        return std::unexpected(log.error());
    }
    return JournalEntry(std::move(*log), clean);
}

Outcome Journal::addSwitch(const PastSwitch& change) const {
    auto log = OwnLog::open(file_.path());
    return log ? appendAndSync(*log, switchLine(change)) : std::unexpected(log.error());
}

Outcome Journal::prune(TimePoint oldest, std::size_t most, const std::function<bool(const PastClean&)>& isOver) const {
    const auto text = file_.read();
    if (!text) {
        return std::unexpected(text.error());
    }
    const Past past = pastOf(*text);
    std::set<std::string> dropped;
    std::size_t kept = 0;
    for (const PastClean& clean : past.cleans) {
        if (clean.at < oldest || kept == most || isOver(clean)) {
            dropped.insert(clean.id);
        } else {
            ++kept;
        }
    }
    const bool agedSwitch = !past.switches.empty() && past.switches.back().at < oldest;
    if (dropped.empty() && !agedSwitch) {
        return {};
    }
    return file_.replace(
        withoutCleans(*text, oldest, [&](const std::string& clean) { return dropped.contains(clean); }));
}

Outcome Journal::forget() const {
    return file_.replace("");
}

} // namespace vellmoor
