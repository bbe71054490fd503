#pragma once

#include "Platform.h"
#include "disk/PackageTypes.h"

namespace vellmoor::mac {

/// Whether LaunchServices knows a folder as a package, by its extension or its mark.
bool isDeclaredPackage(const Path& folder);

} // namespace vellmoor::mac

namespace vellmoor {

/// macOS by Foundation and AppKit; facts and listings by plain system calls, which are quicker and never answer from
/// a cache. One object serves every thread. It has no key files, and its user folders are the
/// layout's.
class MacPlatform final : public Platform {
public:
    [[nodiscard]] std::optional<FileFacts> facts(const Path& path) const override;
    [[nodiscard]] bool exists(const Path& path) const override;
    [[nodiscard]] bool isReadable(const Path& path) const override;
    [[nodiscard]] bool isExecutable(const Path& path) const override;
    [[nodiscard]] std::expected<std::vector<FolderEntry>, std::string> entries(const Path& folder) const override;
    [[nodiscard]] std::optional<std::string> fileContents(const Path& path, std::size_t limit) const override;
    [[nodiscard]] std::optional<std::string> fileStart(const Path& path, std::size_t count) const override;
    [[nodiscard]] std::optional<Path> linkTarget(const Path& path) const override;
    [[nodiscard]] Path standardized(const Path& path) const override;
    [[nodiscard]] std::optional<Path> realPath(const Path& path) const override;
    [[nodiscard]] bool isMountedAt(const Path& place) const override;
    [[nodiscard]] bool isPackage(const Path& folder) const override;

    [[nodiscard]] std::optional<FileIdentity> identity(const Path& path) const override;
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

    [[nodiscard]] std::optional<std::string> commandOutput(const Path& tool,
                                                           const std::vector<std::string>& arguments) const override;
    [[nodiscard]] CommandResult commandResult(const Path& tool,
                                              const std::vector<std::string>& arguments) const override;

    [[nodiscard]] std::uint32_t userId() const override;
    [[nodiscard]] std::string systemRun() const override;
    [[nodiscard]] std::int64_t physicalMemory() const override;
    [[nodiscard]] std::optional<std::string> preferredLanguage() const override;
    void enterWorker() const override;

    [[nodiscard]] std::string relativeDate(TimePoint date, TimePoint now, AppLanguage language) const override;
    [[nodiscard]] int compareNames(std::string_view a, std::string_view b) const override;
    [[nodiscard]] bool containsPhrase(std::string_view text, std::string_view phrase) const override;
    [[nodiscard]] std::string lowerCase(std::string_view text) const override;
    [[nodiscard]] std::string lettersAndDigits(std::string_view text) const override;

private:
    mutable mac::PackageTypes packages_{mac::isDeclaredPackage};
};

} // namespace vellmoor
