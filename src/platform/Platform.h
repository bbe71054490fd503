// What the engine asks of the operating system. One implementation per system, and a stand-in for tests; it is
// always passed in, there is no global one. Every function may be called from any worker thread.
#pragma once

#include "found/CleanupItem.h"
#include "found/MemorySnapshot.h"
#include "texts/L.h"

#include <cstdint>
#include <expected>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor {

using Path = std::filesystem::path;

/// Facts of one path; a link is described itself, not what it names.
struct FileFacts {
    bool isDirectory = false;
    bool isRegularFile = false;
    bool isSymlink = false;
    bool isSticky = false;           ///< the sticky bit of a folder
    std::int64_t allocatedBytes = 0; ///< on the disk, not the length
    std::int64_t length = 0;         ///< bytes of the content
    std::optional<TimePoint> modified;
    std::uint32_t owner = 0; ///< user id
    std::uint32_t mode = 0;  ///< permission bits
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
};

/// The identity that `facts` tell.
FileIdentity identityOf(const FileFacts& facts);

struct FolderEntry {
    std::string name; ///< bytes as on the disk
    bool isDirectory = false;
    bool isRegularFile = false;
    bool isSymlink = false;
    bool isHidden = false;
};

/// Nothing on success, else the system's own reason as it is shown to the user.
using Outcome = std::expected<void, std::string>;

struct Volume {
    Path path;
    std::string name; ///< display name; empty when the system tells none
};

struct Capacity {
    std::int64_t totalBytes = 0;
    std::int64_t availableBytes = 0; ///< what the user may still fill
};

/// The disk that holds a path.
struct Disk {
    std::string name; ///< its file system's UUID, by which it is known wherever it is mounted; empty without one
    Path mount;
    bool keepsInodes = true;    ///< a file keeps its number when the disk is mounted anew
    bool isCopyOnWrite = false; ///< what was removed may be free only later

    bool operator==(const Disk&) const = default;
};

/// A Trash folder: `contents` holds the items; on Linux `folder` also holds their restore notes.
struct TrashFolder {
    Path folder;
    Path contents;
    Path anchor; ///< the folder of the user's or of the volume from which it is reached without following a link
};

struct TrashPlaces;
class TrashSession;

struct CommandResult {
    std::int32_t status = -1; ///< -1: could not be started
    std::string output;       ///< standard output and error as written; empty when not UTF-8
    std::string errorMessage; ///< why it could not be started

    /// The non-empty ones of output and errorMessage, joined with a line feed.
    [[nodiscard]] std::string combinedOutput() const;
};

/// Names of an application bundle (macOS); absent parts are not in its property list.
struct BundleInfo {
    std::optional<std::string> identifier;
    std::optional<std::string> displayName;
    std::optional<std::string> name;
};

/// The keys of a launch agent (macOS) that matter here.
struct LaunchAgent {
    std::optional<std::string> label;
    std::optional<std::string> program;
    std::vector<std::string> arguments;
    bool hasKeepAlive = false;
    bool runAtLoad = false; ///< the Boolean true; the number 1 is not
};

struct RunningApplication {
    std::int32_t pid = 0;
    std::string name;
    std::optional<std::string> bundleIdentifier;
    Path bundlePath; ///< empty for a process without bundle
    bool isActive = false;
};

/// A key file (desktop entry, profiles.ini, unit file): group, key (with its "[locale]" part), unescaped value.
using KeyFile = std::map<std::string, std::map<std::string, std::string>>;

/// The value of a key; empty when the file lacks it.
std::string valueOf(const KeyFile& file, std::string_view group, std::string_view key);

enum class QuitOutcome : std::uint8_t {
    NotRunning,
    Requested,  ///< it was asked, or ended, and is gone
    NoResponse, ///< it was asked, or was to end, and still runs
    CannotAsk,  ///< there is no way to ask it; nothing was sent, and it can only be ended
};

/// The user's own folders as the desktop names them; an empty path: the system names none. One that is the home folder
/// or above it is switched off.
struct UserFolders {
    Path downloads;
    Path desktop;
    Path documents;
    Path videos;
    Path pictures;
    Path music;
    Path publicShare;
    Path templates;

    [[nodiscard]] std::vector<Path> all() const {
        return {downloads, desktop, documents, videos, pictures, music, publicShare, templates};
    }
};

class Platform {
public:
    Platform() = default;
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;
    virtual ~Platform() = default;

    // Facts. Reading fails to "nothing", never to an error.
    [[nodiscard]] virtual std::optional<FileFacts> facts(const Path& path) const = 0;
    /// Whether there is a folder itself; a link to one is none.
    [[nodiscard]] bool isFolder(const Path& path) const;
    /// macOS follows a link. Linux does not (a dangling link exists), and what it may not ask about exists, too.
    [[nodiscard]] virtual bool exists(const Path& path) const = 0;
    [[nodiscard]] virtual bool isReadable(const Path& path) const = 0;
    [[nodiscard]] virtual bool isExecutable(const Path& path) const = 0;
    /// The direct children in the system's order, "." and ".." left out; the reason when it cannot be listed.
    [[nodiscard]] virtual std::expected<std::vector<FolderEntry>, std::string> entries(const Path& folder) const = 0;
    /// The bytes of a regular file of at most `limit` bytes; never blocks on a FIFO or device, never follows `path`
    /// when it is a dangling link. /proc files count as regular.
    [[nodiscard]] virtual std::optional<std::string> fileContents(const Path& path, std::size_t limit) const = 0;
    /// The first bytes of a regular file, at most `count`; nothing for anything else, a link included.
    [[nodiscard]] virtual std::optional<std::string> fileStart(const Path& path, std::size_t count) const;
    [[nodiscard]] virtual std::optional<Path> linkTarget(const Path& path) const = 0;
    /// Normalised as the system's own path comparison wants it; links are not resolved.
    [[nodiscard]] virtual Path standardized(const Path& path) const = 0;
    /// All links resolved; nothing when the path does not exist.
    [[nodiscard]] virtual std::optional<Path> realPath(const Path& path) const = 0;
    /// Where a move or removal of `path` would act: the links above it resolved, its own last component kept, since
    /// such a change acts on a link and not on what it names. Nothing when the folder above does not exist.
    [[nodiscard]] std::optional<Path> realPlace(const Path& path) const;
    /// Whether something is mounted there, links above it resolved. When the system does not tell, yes.
    [[nodiscard]] bool isMountPoint(const Path& path) const;
    /// The same for a place that has no links above it.
    [[nodiscard]] virtual bool isMountedAt(const Path& place) const = 0;
    /// macOS: a folder that is shown as one file. Linux has none.
    [[nodiscard]] virtual bool isPackage(const Path& folder) const = 0;

    /// What `path` is known again by; a link's own. The device is that of facts(), unless the system reuses such
    /// numbers.
    [[nodiscard]] virtual std::optional<FileIdentity> identity(const Path& path) const;

    // Changes. The caller has asked the user; each answers the reason when it did not happen.
    /// One clean's work with the Trash; the folders are opened at once.
    [[nodiscard]] virtual std::unique_ptr<TrashSession> trashSession(TrashPlaces places) const = 0;
    /// Never replaces an existing destination.
    [[nodiscard]] virtual Outcome moveItem(const Path& from, const Path& to) const = 0;
    /// With the folders above it; an existing folder is no failure.
    [[nodiscard]] virtual Outcome createFolder(const Path& folder) const = 0;
    /// A new file; fails when something of that name exists.
    [[nodiscard]] virtual Outcome createFile(const Path& path, std::string_view contents) const = 0;
    /// A new symbolic link with `target` as its text; fails when something of that name exists.
    [[nodiscard]] virtual Outcome createLink(const Path& path, const Path& target) const = 0;
    /// One file or link, never a folder.
    [[nodiscard]] virtual Outcome removeFile(const Path& path) const = 0;

    // Volumes and folders
    /// Those that may hold a Trash of the user, in the system's order.
    [[nodiscard]] virtual std::vector<Volume> mountedVolumes() const = 0;
    [[nodiscard]] virtual std::optional<Capacity> capacity(const Path& path) const = 0;
    /// Of something that exists; nothing when the system does not tell.
    [[nodiscard]] virtual std::optional<Disk> disk(const Path& path) const = 0;
    /// Linux: the localised user folders, read afresh; on macOS all empty.
    [[nodiscard]] virtual UserFolders userFolders() const = 0;

    /// Nothing when it cannot be read or parsed; at most 1 MiB is read.
    [[nodiscard]] virtual std::optional<KeyFile> keyFile(const Path& path) const = 0;

    // Applications
    [[nodiscard]] virtual std::optional<BundleInfo> bundleInfo(const Path& bundle) const = 0;
    [[nodiscard]] virtual std::optional<LaunchAgent> launchAgent(const Path& propertyList) const = 0;
    [[nodiscard]] virtual std::vector<RunningApplication> runningApplications() const = 0;
    /// Vellmoor's own bundle or executable.
    [[nodiscard]] virtual Path ownPath() const = 0;
    /// Asks the application to quit as its own menu would, so that it can ask about unsaved content. Blocks for some
    /// seconds at most; never ends it. Of the numbers in `app` only those count whose process is the one that was seen.
    [[nodiscard]] virtual QuitOutcome requestQuit(const MemoryApp& app) const = 0;
    /// Ends the main processes of an application that cannot be asked: unsaved content is lost. Nothing to be done
    /// on a system where every application can be asked.
    [[nodiscard]] virtual QuitOutcome endApplication(const MemoryApp& /*app*/) const { return QuitOutcome::NoResponse; }

    // Tools, by absolute path and never through a shell
    /// Standard output; nothing when the tool could not start, failed, or printed no UTF-8.
    [[nodiscard]] virtual std::optional<std::string> commandOutput(const Path& tool,
                                                                   const std::vector<std::string>& arguments) const = 0;
    [[nodiscard]] virtual CommandResult commandResult(const Path& tool,
                                                      const std::vector<std::string>& arguments) const = 0;
    /// The same, with the tool's own messages in English where it has others.
    [[nodiscard]] virtual CommandResult untranslatedResult(const Path& tool,
                                                           const std::vector<std::string>& arguments) const {
        return commandResult(tool, arguments);
    }

    /// To be called first on a thread that is about to block for the user; what follows may run with more priority.
    virtual void enterWorker() const {}

    // Host
    [[nodiscard]] virtual std::uint32_t userId() const = 0;
    /// A text that differs each time the system was started, where the devices of identities hold no longer than that;
    /// always the same one where they do.
    [[nodiscard]] virtual std::string systemRun() const = 0;
    [[nodiscard]] virtual std::int64_t physicalMemory() const = 0; ///< bytes; 0 when unknown
    /// The first of the user's preferred languages as the system writes it ("zh-Hans-CN", "en_GB.UTF-8").
    [[nodiscard]] virtual std::optional<std::string> preferredLanguage() const = 0;

    // Text services
    /// Short relative text such as "2 days ago".
    [[nodiscard]] virtual std::string relativeDate(TimePoint date, TimePoint now, AppLanguage language) const = 0;
    /// Below, at or above 0, as the user's language sorts names, ignoring case.
    [[nodiscard]] virtual int compareNames(std::string_view a, std::string_view b) const = 0;
    /// Whether `text` holds `phrase`, ignoring case.
    [[nodiscard]] virtual bool containsPhrase(std::string_view text, std::string_view phrase) const = 0;
    [[nodiscard]] virtual std::string lowerCase(std::string_view text) const = 0;
    /// Lower case, with everything that is neither letter nor digit (in Unicode's sense) removed.
    [[nodiscard]] virtual std::string lettersAndDigits(std::string_view text) const = 0;
};

} // namespace vellmoor
