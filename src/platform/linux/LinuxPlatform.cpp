#include "LinuxPlatform.h"

#include "GlibPointers.h"
#include "KeyFiles.h"
#include "TextServices.h"
#include "disk/Files.h"
#include "disk/Mounts.h"
#include "disk/Paths.h"
#include "disk/UserDirectories.h"
#include "programs/Commands.h"
#include "programs/Quit.h"
#include "trash/LinuxTrashSession.h"
#include "trash/PortalTrashSession.h"

#include <gio/gio.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace vellmoor {
namespace {

Path accountHome() {
    std::array<char, 16384> room{};
    passwd record{};
    passwd* found = nullptr;
    const int error = ::getpwuid_r(::getuid(), &record, room.data(), room.size(), &found);
    return error == 0 && found != nullptr ? Path(found->pw_dir) : Path("/");
}

// There the home's Trash is not the one that the user sees: only the desktop's own service reaches it.
bool isInSandbox() {
    return processEnvironment().insideSnap || ::access("/.flatpak-info", R_OK) == 0;
}

} // namespace

LinuxEnvironment processEnvironment() {
    const auto lookup = [](std::string_view name) -> std::optional<std::string> {
        const char* value = std::getenv(std::string(name).c_str());
        return value == nullptr ? std::nullopt : std::optional<std::string>(value);
    };
    return linuxEnvironment(lookup, accountHome(), files::linkTarget("/proc/self/exe").value_or(""));
}

// Facts

std::optional<FileFacts> LinuxPlatform::facts(const Path& path) const {
    return files::facts(path);
}

bool LinuxPlatform::exists(const Path& path) const {
    return files::existsItself(path);
}

bool LinuxPlatform::isReadable(const Path& path) const {
    return files::isReadable(path);
}

bool LinuxPlatform::isExecutable(const Path& path) const {
    return files::isExecutable(path);
}

std::expected<std::vector<FolderEntry>, std::string> LinuxPlatform::entries(const Path& folder) const {
    return files::entries(folder);
}

std::optional<std::string> LinuxPlatform::fileContents(const Path& path, std::size_t limit) const {
    return files::contents(path, limit);
}

std::optional<Path> LinuxPlatform::linkTarget(const Path& path) const {
    return files::linkTarget(path);
}

Path LinuxPlatform::standardized(const Path& path) const {
    return lexicallyStandardized(path);
}

std::optional<Path> LinuxPlatform::realPath(const Path& path) const {
    return files::realPath(path);
}

bool LinuxPlatform::isMountedAt(const Path& place) const {
    return mounts::isMountPoint(place);
}

bool LinuxPlatform::isPackage(const Path& /*folder*/) const {
    return false;
}

// Changes

std::unique_ptr<TrashSession> LinuxPlatform::trashSession(TrashPlaces places) const {
    return isInSandbox() ? std::make_unique<PortalTrashSession>(std::move(places))
                         : std::make_unique<LinuxTrashSession>(std::move(places));
}

Outcome LinuxPlatform::moveItem(const Path& from, const Path& to) const {
    return files::moveItem(from, to);
}

Outcome LinuxPlatform::createFolder(const Path& folder) const {
    return files::createFolder(folder);
}

Outcome LinuxPlatform::createFile(const Path& path, std::string_view contents) const {
    return files::createFile(path, contents);
}

Outcome LinuxPlatform::createLink(const Path& path, const Path& target) const {
    return files::createLink(path, target);
}

Outcome LinuxPlatform::removeFile(const Path& path) const {
    return files::removeFile(path);
}

// Volumes and folders

std::vector<Volume> LinuxPlatform::mountedVolumes() const {
    return mounts::volumesWithTrash(mounts::list());
}

std::optional<Capacity> LinuxPlatform::capacity(const Path& path) const {
    return files::capacity(path);
}

std::optional<Disk> LinuxPlatform::disk(const Path& path) const {
    return mounts::diskOf(path);
}

UserFolders LinuxPlatform::userFolders() const {
    constexpr std::size_t largest = std::size_t{1} << 20;
    const LinuxEnvironment environment = processEnvironment();
    const std::optional<std::string> text = files::contents(environment.config / "user-dirs.dirs", largest);
    return userDirectories(text.value_or(""), environment.home);
}

std::optional<KeyFile> LinuxPlatform::keyFile(const Path& path) const {
    return readKeyFile(path);
}

// Applications

std::optional<BundleInfo> LinuxPlatform::bundleInfo(const Path& /*bundle*/) const {
    return std::nullopt;
}

std::optional<LaunchAgent> LinuxPlatform::launchAgent(const Path& /*propertyList*/) const {
    return std::nullopt;
}

std::vector<RunningApplication> LinuxPlatform::runningApplications() const {
    return {};
}

Path LinuxPlatform::ownPath() const {
    return files::linkTarget("/proc/self/exe").value_or(Path());
}

QuitOutcome LinuxPlatform::requestQuit(const MemoryApp& app) const {
    return quit::request(app);
}

QuitOutcome LinuxPlatform::endApplication(const MemoryApp& app) const {
    return quit::end(app);
}

// Tools

std::optional<std::string> LinuxPlatform::commandOutput(const Path& tool,
                                                        const std::vector<std::string>& arguments) const {
    return commands::output(tool, arguments);
}

CommandResult LinuxPlatform::commandResult(const Path& tool, const std::vector<std::string>& arguments) const {
    return commands::result(tool, arguments);
}

CommandResult LinuxPlatform::untranslatedResult(const Path& tool, const std::vector<std::string>& arguments) const {
    return commands::result(tool, arguments, commands::Messages::English);
}

// Host

std::uint32_t LinuxPlatform::userId() const {
    return ::getuid();
}

std::string LinuxPlatform::systemRun() const {
    return files::contents("/proc/sys/kernel/random/boot_id", 64).value_or("");
}

std::int64_t LinuxPlatform::physicalMemory() const {
    const std::int64_t pages = ::sysconf(_SC_PHYS_PAGES);
    const std::int64_t size = ::sysconf(_SC_PAGESIZE);
    return pages > 0 && size > 0 ? pages * size : 0;
}

std::optional<std::string> LinuxPlatform::preferredLanguage() const {
    const std::string first = *g_get_language_names(); // never empty
    const std::string language = first.substr(0, first.find('.'));
    return language == "C" || language == "POSIX" ? std::nullopt : std::optional(first);
}

// Texts

std::string LinuxPlatform::relativeDate(TimePoint date, TimePoint now, AppLanguage language) const {
    return texts::relativeDate(date, now, language);
}

int LinuxPlatform::compareNames(std::string_view a, std::string_view b) const {
    return texts::compareNames(a, b);
}

bool LinuxPlatform::containsPhrase(std::string_view text, std::string_view phrase) const {
    return texts::containsPhrase(text, phrase);
}

std::string LinuxPlatform::lowerCase(std::string_view text) const {
    return texts::lowerCase(text);
}

std::string LinuxPlatform::lettersAndDigits(std::string_view text) const {
    return texts::lettersAndDigits(text);
}

} // namespace vellmoor
