#pragma once

#include "Platform.h"

#include <cstddef>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vellmoor::test {

enum class System : std::uint8_t { Mac, Linux };

/// What can be made to fail.
enum class Operation : std::uint8_t {
    List,
    MoveToTrash,
    RemoveFromTrash,
    PutBack,  ///< its path is the one in the Trash
    MoveItem, ///< its path is the one moved from
    CreateFolder,
    CreateFile,
    CreateLink,
    RemoveFile,
};

/// One tool call, in the order of the calls.
struct Invocation {
    Path tool;
    std::vector<std::string> arguments;

    bool operator==(const Invocation&) const = default;
};

/// A change that was asked for and succeeded.
struct Change {
    Operation operation = Operation::MoveItem;
    Path path;

    bool operator==(const Change&) const = default;
};

/// A system of either shape over the real files of a throw-away home: files, links, property lists and key files
/// are read from the disk and really changed; tools, running applications, volumes and the host are scripted. It
/// changes nothing outside its home, its root and its volumes. Script it before it is used from several threads.
class StandInPlatform : public Platform {
public:
    /// A scripted tool: what it answers to these arguments.
    using Tool = std::function<CommandResult(const std::vector<std::string>& arguments)>;

    /// `home` is absolute. `root` stands for "/" as in the layouts.
    StandInPlatform(System system, Path home, Path root = "/");

    const System system;
    const Path home;
    const Path root;

    // The script
    std::map<Path, Tool> tools;         ///< by full path; these count as executable. Others could not be started
    bool startsUnscriptedTools = false; ///< a tool without script is started for real
    std::vector<RunningApplication> running;
    std::vector<Volume> volumes; ///< each is a mount point, too
    std::set<Path> mountPoints;  ///< further ones, besides the real ones
    UserFolders folders;         ///< empty: the layout's own folders are used
    std::optional<Capacity> diskCapacity = Capacity{500'000'000'000, 200'000'000'000}; ///< nothing: cannot be read
    std::int64_t physical = 17'179'869'184;
    std::uint32_t user = 0;    ///< set to the real user id, so that the files belong to the user
    std::string run = "first"; ///< of the system
    /// What disk() answers instead of the host's word.
    std::function<std::optional<Disk>(const Path&)> diskOf;
    std::optional<std::string> language = "en";
    Path own; ///< what ownPath answers; some application in the root
    QuitOutcome quitOutcome = QuitOutcome::Requested;
    /// Called before each change is made (or made to fail), e.g. to remove a target between scan and clean.
    std::function<void(Operation, const Path&)> beforeChange;

    /// Makes this operation fail at `path`; at every path when that is empty.
    void fail(Operation operation, Path path, std::string reason);
    /// Lets `count` more changes succeed; every later one fails.
    void failAfter(std::size_t count, std::string reason);

    // What happened
    [[nodiscard]] std::vector<Invocation> invocations() const;
    /// Whether the tool was run with its messages in English.
    [[nodiscard]] bool ranUntranslated(const Path& tool) const;
    [[nodiscard]] std::vector<Change> changes() const;
    [[nodiscard]] std::vector<MemoryApp> quitRequests() const;
    [[nodiscard]] std::vector<MemoryApp> endedApps() const;

    /// The user's own Trash and where its items lie.
    [[nodiscard]] TrashFolder homeTrash() const;

    // Platform
    [[nodiscard]] std::optional<FileFacts> facts(const Path& path) const override;
    [[nodiscard]] bool exists(const Path& path) const override;
    [[nodiscard]] bool isReadable(const Path& path) const override;
    [[nodiscard]] bool isExecutable(const Path& path) const override;
    [[nodiscard]] std::expected<std::vector<FolderEntry>, std::string> entries(const Path& folder) const override;
    [[nodiscard]] std::optional<std::string> fileContents(const Path& path, std::size_t limit) const override;
    [[nodiscard]] std::optional<Path> linkTarget(const Path& path) const override;
    [[nodiscard]] Path standardized(const Path& path) const override;
    [[nodiscard]] std::optional<Path> realPath(const Path& path) const override;
    [[nodiscard]] bool isMountedAt(const Path& place) const override;
    [[nodiscard]] bool isPackage(const Path& folder) const override;

    [[nodiscard]] std::unique_ptr<TrashSession> trashSession(TrashPlaces places) const override;
    [[nodiscard]] Outcome moveItem(const Path& from, const Path& to) const override;
    [[nodiscard]] Outcome createFolder(const Path& folder) const override;
    [[nodiscard]] Outcome createFile(const Path& path, std::string_view contents) const override;
    [[nodiscard]] Outcome createLink(const Path& path, const Path& target) const override;
    [[nodiscard]] Outcome removeFile(const Path& path) const override;

    [[nodiscard]] std::vector<Volume> mountedVolumes() const override;
    [[nodiscard]] std::optional<Capacity> capacity(const Path& path) const override;
    [[nodiscard]] std::optional<Disk> disk(const Path& path) const override;
    [[nodiscard]] UserFolders userFolders() const override;
    [[nodiscard]] std::optional<KeyFile> keyFile(const Path& path) const override;

    [[nodiscard]] std::optional<BundleInfo> bundleInfo(const Path& bundle) const override;
    [[nodiscard]] std::optional<LaunchAgent> launchAgent(const Path& propertyList) const override;
    [[nodiscard]] std::vector<RunningApplication> runningApplications() const override;
    [[nodiscard]] Path ownPath() const override;
    [[nodiscard]] QuitOutcome requestQuit(const MemoryApp& app) const override;
    [[nodiscard]] QuitOutcome endApplication(const MemoryApp& app) const override;

    [[nodiscard]] std::optional<std::string> commandOutput(const Path& tool,
                                                           const std::vector<std::string>& arguments) const override;
    [[nodiscard]] CommandResult commandResult(const Path& tool,
                                              const std::vector<std::string>& arguments) const override;
    [[nodiscard]] CommandResult untranslatedResult(const Path& tool,
                                                   const std::vector<std::string>& arguments) const override;

    [[nodiscard]] std::uint32_t userId() const override;
    [[nodiscard]] std::string systemRun() const override;
    [[nodiscard]] std::int64_t physicalMemory() const override;
    [[nodiscard]] std::optional<std::string> preferredLanguage() const override;

    [[nodiscard]] std::string relativeDate(TimePoint date, TimePoint now, AppLanguage language) const override;
    [[nodiscard]] int compareNames(std::string_view a, std::string_view b) const override;
    [[nodiscard]] bool containsPhrase(std::string_view text, std::string_view phrase) const override;
    [[nodiscard]] std::string lowerCase(std::string_view text) const override;
    [[nodiscard]] std::string lettersAndDigits(std::string_view text) const override;

private:
    struct Failure {
        Operation operation;
        Path path;
        std::string reason;
    };

    [[nodiscard]] std::optional<std::string> scriptedFailure(Operation operation, const Path& path) const;
    [[nodiscard]] Outcome change(Operation operation, const Path& path, const std::function<Outcome()>& deed) const;
    [[nodiscard]] bool mayChange(const Path& path) const;
    [[nodiscard]] TrashFolder trashFor(const Path& path) const;
    friend class StandInTrashSession;

    std::vector<Failure> failures_;
    std::string laterReason_;

    mutable std::mutex mutex_; // guards what follows
    mutable std::optional<std::size_t> changesLeft_;
    mutable std::vector<Invocation> invocations_;
    mutable std::set<Path> untranslated_;
    mutable std::vector<Change> changes_;
    mutable std::vector<MemoryApp> quitRequests_;
    mutable std::vector<MemoryApp> endedApps_;
};

} // namespace vellmoor::test
