// A deep directory walk: parallel inside one call, bounded in memory, never across a file system.
// This library knows nothing of cleaning; it needs the C++ standard library and system calls only.
#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor::walk {

/// What the walk does after a visit.
enum class Action : std::uint8_t {
    Continue, ///< go on; a directory is entered
    Prune,    ///< go on; a directory is not entered
    Stop,     ///< end the whole walk as soon as possible
};

enum class EntryType : std::uint8_t { File, Directory, Symlink, Other };

/// The place of a directory: enough to build its path when somebody asks for it.
class DirectoryPath {
public:
    virtual ~DirectoryPath() = default;
    /// The absolute path; costs a walk up the ancestors, so ask only when needed.
    [[nodiscard]] virtual std::filesystem::path path() const = 0;
};

/// One directory entry as a visitor sees it; valid during the call only.
struct Entry {
    const DirectoryPath& parent;
    int parentFd;          ///< open on the parent; for *at() calls with `name`
    std::string_view name; ///< bytes as on the disk, not necessarily UTF-8; NUL-terminated
    EntryType type;
    std::int64_t allocatedBytes; ///< allocated bytes of a regular file, 0 otherwise
    std::int64_t modifiedNs;     ///< modification time of a regular file, nanoseconds since 1970, 0 otherwise
    std::uint32_t depth;         ///< 1 for a child of the root

    [[nodiscard]] std::filesystem::path path() const { return parent.path() / name; }
};

/// One directory's complete list of names, before any of its entries is visited.
struct Directory {
    const DirectoryPath& place;
    std::string_view name; ///< last component
    std::uint32_t depth;   ///< 1 for a child of the root
    std::span<const std::string_view> names;
};

/// Called from the walk's worker threads, several at a time; `worker` is below Options::threads and each
/// worker calls from one thread only, so per-worker state needs no lock.
class Visitor {
public:
    virtual ~Visitor() = default;
    virtual Action entry(const Entry& entry, unsigned worker) = 0;
    /// Asked once for each directory below the root when Options::wantsNames is set: Prune leaves it unread
    /// as a whole. The entry call for the directory itself has been made before.
    virtual Action directory(const Directory& directory, unsigned worker);
};

struct Options {
    bool skipHidden =
        true; ///< names that begin with "." (on macOS also the hidden flag) are neither visited nor entered
    bool wantsNames = false;                      ///< call Visitor::directory
    unsigned threads = 0;                         ///< 0: as many as there are processors
    const std::atomic<bool>* cancelled = nullptr; ///< polled at least every 100 entries per worker
    /// Says whether a directory is a package, which is then visited as a directory but not entered. Asked from any
    /// worker, for directories with (macOS) a bundle mark, and for others once per extension and worker, whose
    /// answer holds for the extension. Empty: nothing is a package.
    std::function<bool(const std::filesystem::path&)> isPackage;
};

enum class Outcome : std::uint8_t {
    Complete,   ///< everything reachable was visited; unreadable folders are passed over
    Stopped,    ///< a visitor answered Stop
    Cancelled,  ///< Options::cancelled was seen set
    Unreadable, ///< the root is not a directory (a link is none), or cannot be opened
    Incomplete, ///< entries are missing: no file descriptor was to be had in time, or a folder broke off while read
};

/// Visits everything below `root`, not `root` itself. Order is not defined; the set of visits does not depend on
/// the number of threads. Links are never followed, except in the parents of `root`. A directory on another file
/// system than the root is neither visited nor entered, and a mount point is left out before it is touched; so is
/// whatever vanishes or whose facts cannot be read. On macOS names that begin with "._" do not exist, and a folder
/// whose content lies in a cloud only is visited but not entered: no call of the walk fetches anything, nor does a
/// visitor's. What a visitor throws ends the walk and is thrown again here.
[[nodiscard]] Outcome walk(const std::filesystem::path& root, const Options& options, Visitor& visitor);

/// The number of workers that walk() will use for `options`; at least 1.
unsigned workerCount(const Options& options);

} // namespace vellmoor::walk
