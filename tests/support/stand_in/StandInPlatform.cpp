#include "StandInPlatform.h"

#include "Host.h"
#include "PropertyLists.h"
#include "StandInTrash.h"
#include "Utf8.h"
#include "disk/Paths.h"
#include "found/LargeFileFilters.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <stdexcept>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace vellmoor::test {
namespace {

constexpr std::array packageExtensions{
    "app",       "bundle",        "framework",  "kext",          "plugin",    "pkg",          "mpkg",        "rtfd",
    "xcodeproj", "photoslibrary", "theater",    "imovielibrary", "fcpbundle", "musiclibrary", "tvlibrary",   "logicx",
    "band",      "pages",         "numbers",    "key",           "appex",     "xpc",          "qlgenerator", "prefpane",
    "saver",     "mdimporter",    "playground", "sparsebundle",  "scptd",     "workflow",     "download"};

bool existsFollowed(const Path& path) {
    std::error_code unreachable; // then it does not exist for the user
    return std::filesystem::exists(path, unreachable);
}

// NSURL answers "/private/tmp/x" as "/tmp/x" when that exists.
Path withoutPrivate(const Path& path, const Path& root) {
    for (const char* name : {"tmp", "var", "etc"}) {
        const Path longForm = underRoot(root, std::string("/private/") + name);
        if (path != longForm && !isStrictlyBelow(path, longForm)) {
            continue;
        }
        Path shortForm = underRoot(root, std::string("/") + name);
        if (path != longForm) {
            shortForm /= path.lexically_relative(longForm);
        }
        return existsFollowed(shortForm) ? shortForm : path;
    }
    return path;
}

bool hasDotDot(const Path& path) {
    return std::ranges::find(path, Path("..")) != path.end();
}

} // namespace

StandInPlatform::StandInPlatform(System shape, Path homeFolder, Path rootFolder)
    : system(shape),
      home(lexicallyStandardized(homeFolder)),
      root(lexicallyStandardized(rootFolder)),
      user(::getuid()),
      own(underRoot(root, shape == System::Mac ? "/Applications/Vellmoor.app" : "/usr/bin/vellmoor")) {
    // On a Mac a home of Linux would throw its files into the Trash of whoever runs the tests.
    if (const std::vector<System> hosted = hostedSystems(); std::ranges::find(hosted, shape) == hosted.end()) {
        throw std::invalid_argument("no home of this shape can be played here");
    }
}

void StandInPlatform::fail(Operation operation, Path path, std::string reason) {
    failures_.push_back({operation, std::move(path), std::move(reason)});
}

void StandInPlatform::failAfter(std::size_t count, std::string reason) {
    const std::lock_guard lock(mutex_);
    changesLeft_ = count;
    laterReason_ = std::move(reason);
}

std::vector<Invocation> StandInPlatform::invocations() const {
    const std::lock_guard lock(mutex_);
    return invocations_;
}

bool StandInPlatform::ranUntranslated(const Path& tool) const {
    const std::lock_guard lock(mutex_);
    return untranslated_.contains(tool);
}

std::vector<Change> StandInPlatform::changes() const {
    const std::lock_guard lock(mutex_);
    return changes_;
}

std::vector<MemoryApp> StandInPlatform::quitRequests() const {
    const std::lock_guard lock(mutex_);
    return quitRequests_;
}

std::vector<MemoryApp> StandInPlatform::endedApps() const {
    const std::lock_guard lock(mutex_);
    return endedApps_;
}

TrashFolder StandInPlatform::homeTrash() const {
    if (system == System::Mac) {
        return {home / ".Trash", home / ".Trash", home};
    }
    return {home / ".local/share/Trash", home / ".local/share/Trash/files", home / ".local/share"};
}

// Facts

std::optional<FileFacts> StandInPlatform::facts(const Path& path) const {
    return hostPlatform().facts(path);
}

bool StandInPlatform::exists(const Path& path) const {
    if (system == System::Mac) {
        return existsFollowed(path);
    }
    return hostPlatform().facts(path) || hostPlatform().exists(path);
}

bool StandInPlatform::isReadable(const Path& path) const {
    return !scriptedFailure(Operation::List, path) && hostPlatform().isReadable(path);
}

bool StandInPlatform::isExecutable(const Path& path) const {
    return tools.contains(path) || hostPlatform().isExecutable(path);
}

std::expected<std::vector<FolderEntry>, std::string> StandInPlatform::entries(const Path& folder) const {
    if (auto reason = scriptedFailure(Operation::List, folder)) {
        return std::unexpected(*std::move(reason));
    }
    return hostPlatform().entries(folder);
}

std::optional<std::string> StandInPlatform::fileContents(const Path& path, std::size_t limit) const {
    return hostPlatform().fileContents(path, limit);
}

std::optional<Path> StandInPlatform::linkTarget(const Path& path) const {
    return hostPlatform().linkTarget(path);
}

Path StandInPlatform::standardized(const Path& path) const {
    if (system == System::Linux) {
        return lexicallyStandardized(path);
    }
    // macOS takes ".." through the file system when it is there.
    const std::optional<Path> real = hasDotDot(path) ? hostPlatform().realPath(path) : std::nullopt;
    return withoutPrivate(lexicallyStandardized(real.value_or(path)), root);
}

std::optional<Path> StandInPlatform::realPath(const Path& path) const {
    return hostPlatform().realPath(path);
}

bool StandInPlatform::isMountedAt(const Path& place) const {
    const auto isVolume = [&](const Volume& volume) { return volume.path == place; };
    return mountPoints.contains(place) || std::ranges::any_of(volumes, isVolume) || hostPlatform().isMountedAt(place);
}

bool StandInPlatform::isPackage(const Path& folder) const {
    if (system != System::Mac ||
        std::ranges::find(packageExtensions, lowerExtension(folder)) == packageExtensions.end()) {
        return false;
    }
    const auto known = hostPlatform().facts(folder);
    return known && known->isDirectory;
}

// Changes

std::optional<std::string> StandInPlatform::scriptedFailure(Operation operation, const Path& path) const {
    for (const Failure& failure : failures_) {
        if (failure.operation == operation && (failure.path.empty() || failure.path == path)) {
            return failure.reason;
        }
    }
    return std::nullopt;
}

bool StandInPlatform::mayChange(const Path& path) const {
    const Path place = lexicallyStandardized(path);
    const auto isBelowVolume = [&](const Volume& volume) {
        return volume.path != "/" && isStrictlyBelow(place, volume.path);
    };
    return isStrictlyBelow(place, home) || (root != "/" && isStrictlyBelow(place, root)) ||
           std::ranges::any_of(volumes, isBelowVolume);
}

Outcome StandInPlatform::change(Operation operation, const Path& path, const std::function<Outcome()>& deed) const {
    if (beforeChange) {
        beforeChange(operation, path);
    }
    if (auto reason = scriptedFailure(operation, path)) {
        return std::unexpected(*std::move(reason));
    }
    if (!mayChange(path)) {
        return std::unexpected("outside the stand-in's home, root and volumes: " + path.string());
    }
    const std::lock_guard lock(mutex_);
    if (changesLeft_ && *changesLeft_ == 0) {
        return std::unexpected(laterReason_);
    }
    const Outcome outcome = deed();
    if (outcome) {
        changes_.push_back({operation, path});
        changesLeft_ = changesLeft_ ? std::optional(*changesLeft_ - 1) : std::nullopt;
    }
    return outcome;
}

TrashFolder StandInPlatform::trashFor(const Path& path) const {
    for (const Volume& volume : volumes) {
        if (volume.path != "/" && isStrictlyBelow(lexicallyStandardized(path), volume.path)) {
            const Path folder = volume.path / ".Trashes" / std::to_string(user);
            return {.folder = folder, .contents = folder, .anchor = volume.path};
        }
    }
    return homeTrash();
}

std::unique_ptr<TrashSession> StandInPlatform::trashSession(TrashPlaces places) const {
    return std::make_unique<StandInTrashSession>(*this, std::move(places));
}

Outcome StandInPlatform::moveItem(const Path& from, const Path& to) const {
    if (!mayChange(to)) {
        return std::unexpected("outside the stand-in's home, root and volumes: " + to.string());
    }
    return change(Operation::MoveItem, from, [&] { return hostPlatform().moveItem(from, to); });
}

Outcome StandInPlatform::createFolder(const Path& folder) const {
    return change(Operation::CreateFolder, folder, [&] { return hostPlatform().createFolder(folder); });
}

Outcome StandInPlatform::createFile(const Path& path, std::string_view contents) const {
    return change(Operation::CreateFile, path, [&] { return hostPlatform().createFile(path, contents); });
}

Outcome StandInPlatform::createLink(const Path& path, const Path& target) const {
    return change(Operation::CreateLink, path, [&] { return hostPlatform().createLink(path, target); });
}

Outcome StandInPlatform::removeFile(const Path& path) const {
    return change(Operation::RemoveFile, path, [&] { return hostPlatform().removeFile(path); });
}

// Volumes, applications, host

std::vector<Volume> StandInPlatform::mountedVolumes() const {
    return volumes;
}

std::optional<Capacity> StandInPlatform::capacity(const Path& /*path*/) const {
    return diskCapacity;
}

std::optional<Disk> StandInPlatform::disk(const Path& path) const {
    return diskOf ? diskOf(path) : hostPlatform().disk(path);
}

UserFolders StandInPlatform::userFolders() const {
    return system == System::Mac ? UserFolders{} : folders;
}

std::optional<KeyFile> StandInPlatform::keyFile(const Path& path) const {
    return hostPlatform().keyFile(path);
}

std::optional<BundleInfo> StandInPlatform::bundleInfo(const Path& bundle) const {
    return system == System::Mac ? readBundleInfo(bundle) : std::nullopt;
}

std::optional<LaunchAgent> StandInPlatform::launchAgent(const Path& propertyList) const {
    return system == System::Mac ? readLaunchAgent(propertyList) : std::nullopt;
}

std::vector<RunningApplication> StandInPlatform::runningApplications() const {
    return running;
}

Path StandInPlatform::ownPath() const {
    return own;
}

QuitOutcome StandInPlatform::requestQuit(const MemoryApp& app) const {
    const std::lock_guard lock(mutex_);
    quitRequests_.push_back(app);
    return quitOutcome;
}

QuitOutcome StandInPlatform::endApplication(const MemoryApp& app) const {
    const std::lock_guard lock(mutex_);
    endedApps_.push_back(app);
    return quitOutcome;
}

std::uint32_t StandInPlatform::userId() const {
    return user;
}

std::string StandInPlatform::systemRun() const {
    return run;
}

std::int64_t StandInPlatform::physicalMemory() const {
    return physical;
}

std::optional<std::string> StandInPlatform::preferredLanguage() const {
    return language;
}

// Tools

CommandResult StandInPlatform::commandResult(const Path& tool, const std::vector<std::string>& arguments) const {
    {
        const std::lock_guard lock(mutex_);
        invocations_.push_back({tool, arguments});
    }
    const auto scripted = tools.find(tool);
    if (scripted == tools.end()) {
        return startsUnscriptedTools ? hostPlatform().commandResult(tool, arguments)
                                     : CommandResult{-1, "", std::generic_category().message(ENOENT)};
    }
    CommandResult result = scripted->second(arguments);
    if (!isUtf8(result.output)) {
        result.output.clear();
    }
    return result;
}

CommandResult StandInPlatform::untranslatedResult(const Path& tool, const std::vector<std::string>& arguments) const {
    {
        const std::lock_guard lock(mutex_);
        untranslated_.insert(tool);
    }
    return commandResult(tool, arguments);
}

std::optional<std::string> StandInPlatform::commandOutput(const Path& tool,
                                                          const std::vector<std::string>& arguments) const {
    {
        const std::lock_guard lock(mutex_);
        invocations_.push_back({tool, arguments});
    }
    const auto scripted = tools.find(tool);
    if (scripted == tools.end()) {
        return startsUnscriptedTools ? hostPlatform().commandOutput(tool, arguments) : std::nullopt;
    }
    CommandResult result = scripted->second(arguments);
    if (result.status != 0 || !isUtf8(result.output)) {
        return std::nullopt;
    }
    return std::move(result.output);
}

// Texts

std::string StandInPlatform::relativeDate(TimePoint date, TimePoint now, AppLanguage inLanguage) const {
    return hostPlatform().relativeDate(date, now, inLanguage);
}

int StandInPlatform::compareNames(std::string_view a, std::string_view b) const {
    return hostPlatform().compareNames(a, b);
}

bool StandInPlatform::containsPhrase(std::string_view text, std::string_view phrase) const {
    return hostPlatform().containsPhrase(text, phrase);
}

std::string StandInPlatform::lowerCase(std::string_view text) const {
    return hostPlatform().lowerCase(text);
}

std::string StandInPlatform::lettersAndDigits(std::string_view text) const {
    return hostPlatform().lettersAndDigits(text);
}

} // namespace vellmoor::test
