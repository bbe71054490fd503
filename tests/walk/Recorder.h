#pragma once

#include "Walk.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace vellmoor::walk::test {

/// What a visit told, copied.
struct Seen {
    EntryType type;
    std::int64_t allocatedBytes;
    std::int64_t modifiedNs;
    std::uint32_t depth;
};

/// A visitor that remembers everything; answers are given by the two functions, when set.
class Recorder : public Visitor {
public:
    explicit Recorder(std::filesystem::path root) : root_(std::move(root)) {}

    Action entry(const Entry& entry, unsigned worker) override;
    Action directory(const Directory& directory, unsigned worker) override;

    std::function<Action(const Entry&)> onEntry;
    std::function<Action(const Directory&)> onDirectory;

    /// Paths below the root, with "/" between; only plain files, or all.
    [[nodiscard]] std::set<std::string> files() const;
    [[nodiscard]] std::set<std::string> all() const;
    [[nodiscard]] std::int64_t bytes() const;

    std::map<std::string, Seen> seen;
    std::map<std::string, std::multiset<std::string>> namesOf; ///< by directory
    unsigned visits = 0;         ///< more than seen.size() when something was visited twice
    unsigned directoryCalls = 0; ///< likewise
    std::map<unsigned, std::set<std::thread::id>> threadsOfWorker;

private:
    [[nodiscard]] std::string below(const std::filesystem::path& path) const;

    std::filesystem::path root_;
    std::mutex mutex_;
};

/// Walks with everything that the arguments do not say left as it is in Options.
Outcome record(Recorder& recorder, const std::filesystem::path& root, unsigned threads = 0);

} // namespace vellmoor::walk::test
