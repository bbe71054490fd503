#include "MacPlatform.h"

#include "MacBundles.h"
#include "MacChanges.h"
#include "MacCommands.h"
#include "MacFiles.h"
#include "MacHost.h"
#include "MacRunning.h"
#include "MacTexts.h"
#include "MacTrashSession.h"
#include "MacVolumes.h"

#include <unistd.h>

namespace vellmoor {

// Facts

std::optional<FileFacts> MacPlatform::facts(const Path& path) const {
    return mac::facts(path);
}

bool MacPlatform::exists(const Path& path) const {
    return mac::exists(path);
}

bool MacPlatform::isReadable(const Path& path) const {
    return mac::isReadable(path);
}

bool MacPlatform::isExecutable(const Path& path) const {
    return mac::isExecutable(path);
}

std::expected<std::vector<FolderEntry>, std::string> MacPlatform::entries(const Path& folder) const {
    return mac::entries(folder);
}

std::optional<std::string> MacPlatform::fileContents(const Path& path, std::size_t limit) const {
    return mac::fileContents(path, limit);
}

std::optional<std::string> MacPlatform::fileStart(const Path& path, std::size_t count) const {
    return mac::fileStart(path, count);
}

std::optional<Path> MacPlatform::linkTarget(const Path& path) const {
    return mac::linkTarget(path);
}

Path MacPlatform::standardized(const Path& path) const {
    return mac::standardized(path);
}

std::optional<Path> MacPlatform::realPath(const Path& path) const {
    return mac::realPath(path);
}

bool MacPlatform::isMountPoint(const Path& path) const {
    const std::optional<Path> real = realPlace(standardized(path));
    return real && mac::isMountPoint(*real); // else nothing is there that could be moved
}

bool MacPlatform::isPackage(const Path& folder) const {
    return mac::hasBundleMark(folder) || packages_.contain(folder);
}

std::optional<FileIdentity> MacPlatform::identity(const Path& path) const {
    return mac::identity(path);
}

// Changes

std::unique_ptr<TrashSession> MacPlatform::trashSession(TrashPlaces /*places*/) const {
    return std::make_unique<MacTrashSession>();
}

Outcome MacPlatform::moveItem(const Path& from, const Path& to) const {
    return mac::moveItem(from, to);
}

Outcome MacPlatform::createFolder(const Path& folder) const {
    return mac::createFolder(folder);
}

Outcome MacPlatform::createFile(const Path& path, std::string_view contents) const {
    return mac::createFile(path, contents);
}

Outcome MacPlatform::createLink(const Path& path, const Path& target) const {
    return mac::createLink(path, target);
}

Outcome MacPlatform::removeFile(const Path& path) const {
    return mac::removeFile(path);
}

// Volumes and folders

std::vector<Volume> MacPlatform::mountedVolumes() const {
    return mac::mountedVolumes();
}

std::optional<Capacity> MacPlatform::capacity(const Path& path) const {
    return mac::capacity(path);
}

UserFolders MacPlatform::userFolders() const {
    return {}; // the layout's own: Finder translates their names, the disk does not
}

std::optional<KeyFile> MacPlatform::keyFile(const Path& /*path*/) const {
    return std::nullopt; // macOS has property lists in their place
}

// Applications

std::optional<BundleInfo> MacPlatform::bundleInfo(const Path& bundle) const {
    return mac::bundleInfo(bundle);
}

std::optional<LaunchAgent> MacPlatform::launchAgent(const Path& propertyList) const {
    return mac::launchAgent(propertyList);
}

std::vector<RunningApplication> MacPlatform::runningApplications() const {
    return mac::runningApplications();
}

Path MacPlatform::ownPath() const {
    return mac::ownPath();
}

QuitOutcome MacPlatform::requestQuit(const MemoryApp& app) const {
    return app.path ? mac::requestQuit(*app.path) : QuitOutcome::NotRunning;
}

// Tools

std::optional<std::string> MacPlatform::commandOutput(const Path& tool,
                                                      const std::vector<std::string>& arguments) const {
    return mac::commandOutput(tool, arguments);
}

CommandResult MacPlatform::commandResult(const Path& tool, const std::vector<std::string>& arguments) const {
    return mac::commandResult(tool, arguments);
}

// Host

std::uint32_t MacPlatform::userId() const {
    return ::getuid();
}

std::int64_t MacPlatform::physicalMemory() const {
    return mac::physicalMemory();
}

std::optional<std::string> MacPlatform::preferredLanguage() const {
    return mac::preferredLanguage();
}

void MacPlatform::enterWorker() const {
    mac::hurryThisThread();
}

// Texts

std::string MacPlatform::relativeDate(TimePoint date, TimePoint now, AppLanguage language) const {
    return mac::relativeDate(date, now, language);
}

int MacPlatform::compareNames(std::string_view a, std::string_view b) const {
    return mac::compareNames(a, b);
}

bool MacPlatform::containsPhrase(std::string_view text, std::string_view phrase) const {
    return mac::containsPhrase(text, phrase);
}

std::string MacPlatform::lowerCase(std::string_view text) const {
    return mac::lowerCase(text);
}

std::string MacPlatform::lettersAndDigits(std::string_view text) const {
    return mac::lettersAndDigits(text);
}

} // namespace vellmoor
