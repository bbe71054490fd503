#include "history/JournalLines.h"

#include "PercentText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <chrono>
#include <map>
#include <unordered_set>
#include <utility>

namespace vellmoor {
namespace {

using Json = nlohmann::json;

template <class Value, std::size_t Count>
using Names = std::array<std::pair<Value, const char*>, Count>;

constexpr Names<FileKind, 4> kinds{
    {{FileKind::File, "file"}, {FileKind::Folder, "folder"}, {FileKind::Link, "link"}, {FileKind::Other, "other"}}};
constexpr Names<Sameness, 3> samenesses{
    {{Sameness::Kind, "kind"}, {Sameness::File, "file"}, {Sameness::Content, "content"}}};

template <class Value, std::size_t Count>
std::string_view nameOf(const Names<Value, Count>& names, Value value) {
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

/// Titles, reasons and names come from other programs' files, too: what is no UTF-8 must not stop a line.
std::string line(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

// A clean writes two lines a target: these are put together by hand, ten times quicker than by way of a Json. Numbers
// and encoded paths need no escaping.
class Fields {
public:
    Fields(std::string_view event, const std::string& clean) {
        text_.append(R"({"event":")").append(event).append(R"(","id":")").append(clean).append("\"");
    }

    void add(std::string_view name, std::int64_t number) { key(name).append(std::to_string(number)); }
    void add(std::string_view name, std::uint64_t number) { key(name).append(std::to_string(number)); }
    void add(std::string_view name, bool value) { key(name).append(value ? "true" : "false"); }
    void add(std::string_view name, std::string_view plain) { key(name).append("\"").append(plain).append("\""); }
    void add(std::string_view name, const SharedPath& path) {
        add(name, std::string_view(percentEncoded(path.native())));
    }
    void add(std::string_view name, const std::vector<std::uint32_t>& numbers) {
        key(name).append("[");
        for (std::size_t index = 0; index < numbers.size(); ++index) {
            text_.append(index == 0 ? "" : ",").append(std::to_string(numbers[index]));
        }
        text_.append("]");
    }
    /// Any text.
    void addText(std::string_view name, const std::string& text) {
        key(name).append(Json(text).dump(-1, ' ', false, Json::error_handler_t::replace));
    }
    void add(const FileIdentity& identity) {
        add("device", identity.device);
        add("inode", identity.inode);
        add("kind", nameOf(kinds, identity.kind));
        add("length", identity.length);
        add("modified", nanoseconds(identity.modified));
    }

    std::string line() && { return std::move(text_.append("}\n")); }

private:
    std::string& key(std::string_view name) { return text_.append(",\"").append(name).append("\":"); }

    std::string text_;
};

FileIdentity identityOf(const Json& json) {
    return {.device = json.at("device").get<std::uint64_t>(),
            .inode = json.at("inode").get<std::uint64_t>(),
            .kind = valueOf(kinds, json.at("kind")),
            .length = json.at("length").get<std::int64_t>(),
            .modified = timePoint(json.at("modified"))};
}

PastTarget targetOf(const Json& json, std::size_t rows) {
    PastTarget target;
    target.path = pathOf(json.at("path"));
    target.row = json.at("row").get<std::size_t>();
    if (target.row >= rows) {
        throw Json::other_error::create(0, "no such row", &json);
    }
    target.identity = identityOf(json);
    target.sameness = valueOf(samenesses, json.at("sameness"));
    target.bytes = json.at("bytes").get<std::int64_t>();
    target.parentModes = json.at("modes").get<std::vector<std::uint32_t>>();
    target.wasTrashed = json.at("trashed").get<bool>();
    target.isBody = json.at("body").get<bool>();
    return target;
}

Json rowsOf(const PastClean& clean) {
    Json rows = Json::array();
    for (const PastRow& row : clean.rows) {
        Json one{{"module", rawValue(row.module)}, {"title", row.title}};
        if (row.application) {
            one["application"] = percentEncoded(row.application->native());
        }
        if (row.identifier) {
            one["identifier"] = *row.identifier;
        }
        rows.push_back(std::move(one));
    }
    return rows;
}

PastRow rowOf(const Json& json) {
    PastRow row;
    row.module = cleanerModule(json.at("module").get<std::string>()).value_or(CleanerModule::smartScan);
    row.title = json.at("title").get<std::string>();
    if (json.contains("application")) {
        row.application = pathOf(json.at("application"));
    }
    if (json.contains("identifier")) {
        row.identifier = json.at("identifier").get<std::string>();
    }
    return row;
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
        std::unordered_set<std::string_view> paths; ///< texts of its targets
    };

    void takeEvent(const Json& json) {
        const auto event = json.at("event").get<std::string>();
        if (event == "clean") {
            takeHeader(json);
        } else if (event == "switch") {
            switches_.push_back({.at = timePoint(json.at("at")),
                                 .name = json.at("name").get<std::string>(),
                                 .file = pathOf(json.at("file")),
                                 .isEnabled = json.at("enabled").get<bool>()});
        } else {
            takeEventOf(cleans_.at(json.at("id").get<std::string>()), event, json);
        }
    }

    static void takeEventOf(Draft& draft, const std::string& event, const Json& json) {
        PastClean& clean = draft.clean;
        if (event == "want") {
            if (json.at("index").get<std::size_t>() == clean.targets.size()) {
                clean.targets.push_back(targetOf(json, clean.rows.size()));
                clean.targets.back().isRepeated = !draft.paths.insert(clean.targets.back().path.native()).second;
            }
        } else if (event == "did") {
            takeFact(clean.targets.at(json.at("index").get<std::size_t>()), json);
        } else if (event == "back") {
            clean.targets.at(json.at("index").get<std::size_t>()).isPutBack = true;
        } else if (event == "end") {
            clean.isFinished = true;
        } else if (event == "settled") {
            clean.isSettled = true;
        }
    }

    void takeHeader(const Json& json) {
        Draft draft;
        draft.clean.id = json.at("id").get<std::string>();
        draft.clean.at = timePoint(json.at("at"));
        draft.clean.module = cleanerModule(json.at("module").get<std::string>()).value_or(CleanerModule::smartScan);
        draft.clean.run = json.at("run").get<std::string>();
        draft.clean.home = pathOf(json.at("home"));
        draft.count = json.at("count").get<std::size_t>();
        for (const Json& disk : json.at("disks")) {
            draft.clean.disks.push_back({.device = disk.at("device").get<std::uint64_t>(),
                                         .name = disk.at("name").get<std::string>(),
                                         .mount = pathOf(disk.at("mount"))});
        }
        for (const Json& row : json.at("rows")) {
            draft.clean.rows.push_back(rowOf(row));
        }
        const std::string id = draft.clean.id;
        if (cleans_.emplace(id, std::move(draft)).second) {
            order_.push_back(id);
        }
    }

    static void takeFact(PastTarget& target, const Json& json) {
        target.fate = valueOf(cleanupFates, json.at("fate"));
        target.place = pathOf(json.at("place"));
        target.reason = json.at("reason").get<std::string>();
        if (json.contains("inode")) { // what moved, where it is not exactly what was wanted
            target.identity = identityOf(json);
        }
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

bool isDroppedLine(const Json& json, TimePoint oldest, const std::function<bool(const std::string&)>& isDropped) {
    if (!json.is_object()) {
        return false;
    }
    const auto at = json.find("at");
    if (json.value("event", Json()) == "switch" && at != json.end() && at->is_number_integer()) {
        return timePoint(*at) < oldest;
    }
    const auto id = json.find("id");
    return id != json.end() && id->is_string() && isDropped(id->get<std::string>());
}

} // namespace

std::string cleanLine(const PastClean& clean) {
    Json disks = Json::array();
    for (const PastDisk& disk : clean.disks) {
        disks.push_back({{"device", disk.device}, {"name", disk.name}, {"mount", percentEncoded(disk.mount.native())}});
    }
    return line({{"event", "clean"},
                 {"id", clean.id},
                 {"at", nanoseconds(clean.at)},
                 {"module", rawValue(clean.module)},
                 {"run", clean.run},
                 {"home", percentEncoded(clean.home.native())},
                 {"disks", std::move(disks)},
                 {"rows", rowsOf(clean)},
                 {"count", clean.targets.size()}});
}

std::string wantLine(std::size_t index, const std::string& clean, const PastTarget& target) {
    Fields fields("want", clean);
    fields.add("index", std::uint64_t{index});
    fields.add("path", target.path);
    fields.add("row", std::uint64_t{target.row});
    fields.add(target.identity);
    fields.add("sameness", nameOf(samenesses, target.sameness));
    fields.add("bytes", target.bytes);
    fields.add("modes", target.parentModes);
    fields.add("trashed", target.wasTrashed);
    fields.add("body", target.isBody);
    return std::move(fields).line();
}

std::string factLine(std::size_t index, const std::string& clean, const CleanupOutcome& outcome) {
    Fields fields("did", clean);
    fields.add("index", std::uint64_t{index});
    fields.add("fate", rawValue(outcome.fate));
    fields.add("place", outcome.place);
    fields.addText("reason", outcome.reason);
    if (outcome.fate == CleanupFate::Trashed && outcome.identity) {
        fields.add(*outcome.identity);
    }
    return std::move(fields).line();
}

std::string eventLine(std::string_view event, const std::string& clean, std::optional<std::size_t> index) {
    Fields fields(event, clean);
    if (index) {
        fields.add("index", std::uint64_t{*index});
    }
    return std::move(fields).line();
}

std::string switchLine(const PastSwitch& change) {
    return line({{"event", "switch"},
                 {"at", nanoseconds(change.at)},
                 {"name", change.name},
                 {"file", percentEncoded(change.file.native())},
                 {"enabled", change.isEnabled}});
}

Past pastOf(std::string_view text) {
    Reader reader;
    forEachLine(text, [&](std::string_view one) { reader.take(one); });
    return std::move(reader).past();
}

std::string withoutCleans(std::string_view text, TimePoint oldest,
                          const std::function<bool(const std::string&)>& isDropped) {
    std::string rest;
    forEachLine(text, [&](std::string_view one) {
        if (!isDroppedLine(Json::parse(one, nullptr, false), oldest, isDropped)) {
            rest.append(one).append("\n");
        }
    });
    return rest;
}

} // namespace vellmoor
