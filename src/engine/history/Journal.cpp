#include "history/Journal.h"

#include "PercentText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <chrono>
#include <map>
#include <optional>
#include <set>
#include <utility>

namespace vellmoor {
namespace {

using Json = nlohmann::json;

template <class Value, std::size_t Count>
using Names = std::array<std::pair<Value, const char*>, Count>;

constexpr Names<FileKind, 4> kinds{
    {{FileKind::File, "file"}, {FileKind::Folder, "folder"}, {FileKind::Link, "link"}, {FileKind::Other, "other"}}};
constexpr Names<Sameness, 2> samenesses{{{Sameness::Kind, "kind"}, {Sameness::Content, "content"}}};

template <class Value, std::size_t Count>
std::string nameOf(const Names<Value, Count>& names, Value value) {
    return std::ranges::find(names, value, [](const auto& pair) { return pair.first; })->second;
}

/// Throws Json::exception for an unknown name, as for any other field that is not what it should be.
template <class Value, std::size_t Count>
Value valueOf(const Names<Value, Count>& names, const Json& json) {
    const auto name = json.get<std::string>();
    const auto* found = std::ranges::find(names, name, [](const auto& pair) { return std::string(pair.second); });
    if (found == names.end()) {
        throw Json::other_error::create(0, "unknown name " + name, &json);
    }
    return found->first;
}

std::int64_t nanoseconds(TimePoint time) {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(time.time_since_epoch()).count();
}

TimePoint timePoint(const Json& json) {
    return TimePoint(
        std::chrono::duration_cast<TimePoint::duration>(std::chrono::nanoseconds(json.get<std::int64_t>())));
}

Path pathOf(const Json& json) {
    return percentDecoded(json.get<std::string>());
}

/// Reasons and titles come from other programs' files, too: what is no UTF-8 must not stop a line.
std::string line(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string header(const PastClean& clean) {
    return line({{"event", "clean"},
                 {"id", clean.id},
                 {"at", nanoseconds(clean.at)},
                 {"module", rawValue(clean.module)},
                 {"boot", clean.boot},
                 {"count", clean.targets.size()}});
}

std::string intent(const std::string& id, std::size_t index, const PastTarget& target) {
    return line({{"event", "want"},
                 {"id", id},
                 {"index", index},
                 {"path", percentEncoded(target.path.native())},
                 {"title", target.title},
                 {"device", target.identity.device},
                 {"inode", target.identity.inode},
                 {"kind", nameOf(kinds, target.identity.kind)},
                 {"length", target.identity.length},
                 {"modified", nanoseconds(target.identity.modified)},
                 {"sameness", nameOf(samenesses, target.sameness)},
                 {"bytes", target.bytes},
                 {"modes", target.parentModes},
                 {"place", percentEncoded(target.place.native())}});
}

PastTarget targetOf(const Json& json) {
    PastTarget target;
    target.path = pathOf(json.at("path"));
    target.title = json.at("title").get<std::string>();
    target.identity = {.device = json.at("device").get<std::uint64_t>(),
                       .inode = json.at("inode").get<std::uint64_t>(),
                       .kind = valueOf(kinds, json.at("kind")),
                       .length = json.at("length").get<std::int64_t>(),
                       .modified = timePoint(json.at("modified"))};
    target.sameness = valueOf(samenesses, json.at("sameness"));
    target.bytes = json.at("bytes").get<std::int64_t>();
    target.parentModes = json.at("modes").get<std::vector<std::uint32_t>>();
    target.place = pathOf(json.at("place"));
    return target;
}

/// The lines of the file, put together again. Each belongs to a clean or says so itself.
class Reader {
public:
    void take(std::string_view text) {
        const Json json = Json::parse(text, nullptr, false);
        if (!json.is_object()) {
            return; // cut off or from elsewhere
        }
        try {
            takeEvent(json);
        } catch (const std::exception&) { // NOLINT(bugprone-empty-catch)
            // Another version's, or about what was dropped: it is passed over.
        }
    }

    Past past() && {
        Past past;
        for (const std::string& id : order_) {
            Draft& draft = cleans_.at(id);
            // Without all that was wanted, nothing had been moved yet.
            if (draft.clean.targets.size() == draft.count) {
                past.cleans.push_back(std::move(draft.clean));
            }
        }
        std::ranges::reverse(past.cleans);
        past.switches = std::move(switches_);
        std::ranges::reverse(past.switches);
        return past;
    }

private:
    struct Draft {
        PastClean clean;
        std::size_t count = 0;
    };

    void takeEvent(const Json& json) {
        const auto event = json.at("event").get<std::string>();
        if (event == "clean") {
            takeHeader(json);
        } else if (event == "want") {
            Draft& draft = cleans_.at(json.at("id").get<std::string>());
            if (json.at("index").get<std::size_t>() == draft.clean.targets.size()) {
                draft.clean.targets.push_back(targetOf(json));
            }
        } else if (event == "did") {
            takeFact(json);
        } else if (event == "end") {
            cleans_.at(json.at("id").get<std::string>()).clean.isFinished = true;
        } else if (event == "back") {
            cleans_.at(json.at("id").get<std::string>())
                .clean.targets.at(json.at("index").get<std::size_t>())
                .isPutBack = true;
        } else if (event == "switch") {
            switches_.push_back({.at = timePoint(json.at("at")),
                                 .name = json.at("name").get<std::string>(),
                                 .file = pathOf(json.at("file")),
                                 .isEnabled = json.at("enabled").get<bool>()});
        }
    }

    void takeHeader(const Json& json) {
        Draft draft;
        draft.clean.id = json.at("id").get<std::string>();
        draft.clean.at = timePoint(json.at("at"));
        draft.clean.module = cleanerModule(json.at("module").get<std::string>()).value_or(CleanerModule::smartScan);
        draft.clean.boot = json.at("boot").get<std::string>();
        draft.count = json.at("count").get<std::size_t>();
        const std::string id = draft.clean.id;
        if (cleans_.emplace(id, std::move(draft)).second) {
            order_.push_back(id);
        }
    }

    void takeFact(const Json& json) {
        PastTarget& target =
            cleans_.at(json.at("id").get<std::string>()).clean.targets.at(json.at("index").get<std::size_t>());
        target.fate = valueOf(cleanupFates, json.at("fate"));
        target.place = pathOf(json.at("place"));
        target.reason = json.at("reason").get<std::string>();
    }

    std::map<std::string, Draft> cleans_;
    std::vector<std::string> order_;
    std::vector<PastSwitch> switches_;
};

template <class Take>
void forEachLine(std::string_view text, const Take& take) {
    while (!text.empty()) {
        const std::string_view one = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), one.size() + 1));
        take(one);
    }
}

/// The clean that a line belongs to; nothing for every other line.
std::optional<std::string> cleanOf(std::string_view text) {
    const Json json = Json::parse(text, nullptr, false);
    const auto id = json.is_object() ? json.find("id") : json.end();
    return id != json.end() && id->is_string() ? std::optional(id->get<std::string>()) : std::nullopt;
}

} // namespace

Outcome JournalEntry::did(std::size_t index, const CleanupOutcome& outcome) {
    return log_.append(line({{"event", "did"},
                             {"id", id_},
                             {"index", index},
                             {"fate", nameOf(cleanupFates, outcome.fate)},
                             {"place", percentEncoded(outcome.place.native())},
                             {"reason", outcome.reason}}));
}

Outcome JournalEntry::end() {
    const Outcome written = log_.append(line({{"event", "end"}, {"id", id_}}));
    return written ? log_.sync() : written;
}

std::expected<Past, std::string> Journal::read() const {
    const auto text = file_.read();
    if (!text) {
        return std::unexpected(text.error());
    }
    Reader reader;
    forEachLine(*text, [&](std::string_view one) { reader.take(one); });
    return std::move(reader).past();
}

std::expected<JournalEntry, std::string> Journal::begin(const PastClean& clean) const {
    auto log = OwnLog::open(file_.path());
    if (!log) {
        return std::unexpected(log.error());
    }
    std::string text = header(clean);
    for (std::size_t index = 0; index < clean.targets.size(); ++index) {
        text += intent(clean.id, index, clean.targets[index]);
    }
    // All of it or nothing: a header without its targets is no clean to a reader.
    if (const Outcome written = log->append(text); !written) {
        return std::unexpected(written.error());
    }
    if (const Outcome synced = log->sync(); !synced) {
        return std::unexpected(synced.error());
    }
    return JournalEntry(std::move(*log), clean.id);
}

Outcome Journal::addSwitch(const PastSwitch& change) const {
    auto log = OwnLog::open(file_.path());
    if (!log) {
        return std::unexpected(log.error());
    }
    const Outcome written = log->append(line({{"event", "switch"},
                                              {"at", nanoseconds(change.at)},
                                              {"name", change.name},
                                              {"file", percentEncoded(change.file.native())},
                                              {"enabled", change.isEnabled}}));
    return written ? log->sync() : written;
}

Outcome Journal::putBack(const std::string& clean, std::size_t index) const {
    auto log = OwnLog::open(file_.path());
    if (!log) {
        return std::unexpected(log.error());
    }
    return log->append(line({{"event", "back"}, {"id", clean}, {"index", index}}));
}

Outcome Journal::prune(TimePoint oldest, std::size_t most,
                       const std::function<bool(const PastTarget&)>& isThere) const {
    const auto text = file_.read();
    const auto past = read();
    if (!text || !past) {
        return std::unexpected(text ? past.error() : text.error());
    }
    std::set<std::string> dropped;
    std::size_t kept = 0;
    for (const PastClean& clean : past->cleans) {
        const bool holds = !clean.isFinished || std::ranges::any_of(clean.targets, isThere);
        if (clean.at < oldest || kept == most || !holds) {
            dropped.insert(clean.id);
        } else {
            ++kept;
        }
    }
    if (dropped.empty()) {
        return {};
    }
    std::string rest;
    forEachLine(*text, [&](std::string_view one) {
        if (const auto id = cleanOf(one); !id || !dropped.contains(*id)) {
            rest.append(one).append("\n");
        }
    });
    return file_.replace(rest);
}

Outcome Journal::forget() const {
    return file_.replace("");
}

} // namespace vellmoor
