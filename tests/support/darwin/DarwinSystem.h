// A stand-in for the calls that macOS has and Linux does not, over real folders: so the sources for macOS run in
// tests on Linux, under its sanitizers. Records of getattrlistbulk are packed as the kernel packs them.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <set>
#include <span>
#include <string>
#include <sys/attr.h>
#include <vector>

namespace vellmoor::test {

/// What is different from the folders on the disk; entries are named by their last component.
struct DarwinTraits {
    std::map<std::string, std::uint32_t> flags;       ///< st_flags
    std::map<std::string, std::uint32_t> mountStatus; ///< DIR_MNTSTATUS_...
    std::set<std::string> bundles;                    ///< with Finder's bundle bit
    std::map<std::string, int> entryErrors;           ///< told by getattrlistbulk in place of the facts
    std::map<std::string, int> statErrors;            ///< told by stat() and its like
    std::vector<std::string> mounts;                  ///< mount points

    attribute_set_t withheld{};                                       ///< what the file system does not know
    std::size_t batchBytes = std::numeric_limits<std::size_t>::max(); ///< at most, in one answer
    std::size_t padding = 0;                                          ///< bytes behind each record, perhaps odd
    /// Asked before each batch: the folder's path and how many were read from it; an errno value fails the call.
    std::function<int(const std::string& folder, unsigned batches)> failure;
    /// May change each batch and its number of records.
    std::function<void(std::span<char> batch, int& records)> damage;
};

/// Makes the stand-in answer by these traits while it lives, and counts. There is one at a time.
class DarwinSystem {
public:
    explicit DarwinSystem(DarwinTraits traits);
    ~DarwinSystem();
    DarwinSystem(const DarwinSystem&) = delete;
    DarwinSystem& operator=(const DarwinSystem&) = delete;

    /// The folders that getattrlistbulk was called for, by their last component.
    [[nodiscard]] std::set<std::string> listed() const;
    /// Calls from threads that would have let the system fetch what lies in a cloud.
    [[nodiscard]] unsigned unguardedCalls() const;
    /// The names that stat() and its like were called for, as they were given.
    [[nodiscard]] std::multiset<std::string> statted() const;
};

/// The lines of the system's log as others see them: what is not public is "<private>". They are taken away by it.
std::vector<std::string> takeLog();

/// Whether this thread may fetch what lies in a cloud, as every thread may from its start.
bool threadMayFetch();

/// This thread's quality-of-service class; QOS_CLASS_DEFAULT (0x15) from its start.
unsigned urgencyOfThread();

} // namespace vellmoor::test
