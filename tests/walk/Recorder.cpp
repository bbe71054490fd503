#include "Recorder.h"

namespace vellmoor::walk::test {

std::string Recorder::below(const std::filesystem::path& path) const {
    const std::string& text = path.native();
    const std::string prefix = root_.native() + "/";
    return text.starts_with(prefix) ? text.substr(prefix.size()) : "not below the root: " + text;
}

Action Recorder::entry(const Entry& entry, unsigned worker) {
    {
        const std::lock_guard lock(mutex_);
        ++visits;
        seen[below(entry.path())] = {entry.type, entry.allocatedBytes, entry.modifiedNs, entry.depth};
        threadsOfWorker[worker].insert(std::this_thread::get_id());
    }
    return onEntry ? onEntry(entry) : Action::Continue;
}

Action Recorder::directory(const Directory& directory, unsigned worker) {
    {
        const std::lock_guard lock(mutex_);
        ++directoryCalls;
        auto& names = namesOf[below(directory.place.path())];
        for (const std::string_view name : directory.names) {
            names.emplace(name);
        }
        threadsOfWorker[worker].insert(std::this_thread::get_id());
    }
    return onDirectory ? onDirectory(directory) : Action::Continue;
}

std::set<std::string> Recorder::files() const {
    std::set<std::string> result;
    for (const auto& [path, facts] : seen) {
        if (facts.type == EntryType::File) {
            result.insert(path);
        }
    }
    return result;
}

std::set<std::string> Recorder::all() const {
    std::set<std::string> result;
    for (const auto& [path, facts] : seen) {
        result.insert(path);
    }
    return result;
}

std::int64_t Recorder::bytes() const {
    std::int64_t sum = 0;
    for (const auto& [path, facts] : seen) {
        sum += facts.allocatedBytes;
    }
    return sum;
}

Outcome record(Recorder& recorder, const std::filesystem::path& root, unsigned threads) {
    Options options;
    options.threads = threads;
    return walk(root, options, recorder);
}

} // namespace vellmoor::walk::test
