#include "Platform.h"
#include "desktop/ExecLine.h"
#include "login/StartupEntries.h"

#include <algorithm>

namespace vellmoor {
namespace {

/// A unit file, no template, no mask and no second name of another unit.
bool isUnitOfItsOwn(const EngineContext& context, const Path& file) {
    if (file.stem().native().ends_with('@')) {
        return false;
    }
    const std::optional<FileFacts> facts = context.platform().facts(file);
    if (!facts || !facts->isSymlink) {
        return facts.has_value();
    }
    const std::optional<Path> target = context.platform().linkTarget(file);
    const std::optional<Path> real = context.platform().realPath(file);
    return target && real && target->filename() == file.filename() && real->filename() == file.filename();
}

/// The words of an ExecStart value without the prefixes of the program, "%h" resolved to the home folder
/// (systemd.service(5), systemd.unit(5)).
std::vector<std::string> commandWords(const EngineContext& context, std::string_view command) {
    command.remove_prefix(std::min(command.find_first_not_of("@-:+!| \t"), command.size()));
    std::vector<std::string> words = execWords(command).value_or(std::vector<std::string>());
    if (!words.empty() && words.front().starts_with("%h/")) {
        words.front().replace(0, 2, context.layout().home.native());
    }
    return words;
}

/// Whether a target starts the unit: a link of its name in a folder such as default.target.wants.
bool isWanted(const EngineContext& context, const Path& unitFolder, const std::string& unit) {
    const auto folders = context.platform().entries(unitFolder);
    if (!folders) {
        return false;
    }
    return std::ranges::any_of(*folders, [&](const FolderEntry& folder) {
        if (!folder.isDirectory || !(folder.name.ends_with(".wants") || folder.name.ends_with(".requires"))) {
            return false;
        }
        const std::optional<FileFacts> link = context.platform().facts(unitFolder / folder.name / unit);
        return link && link->isSymlink;
    });
}

Path enabledFolder(const EngineContext& context) {
    for (const StartupFolders& folders : context.layout().startup.folders) {
        if (folders.kind == StartupKind::UserService) {
            return folders.enabled;
        }
    }
    return {};
}

} // namespace

std::optional<StartupFacts> userServiceFacts(EngineContext& context, const Path& file) {
    if (!isUnitOfItsOwn(context, file)) {
        return std::nullopt;
    }
    const std::optional<KeyFile> keys = context.platform().keyFile(file);
    if (!keys || !keys->contains("Service")) {
        return std::nullopt;
    }
    StartupFacts facts;
    facts.label = file.stem().string();
    facts.ownName = valueOf(*keys, "Unit", "Description");
    const std::vector<std::string> words = commandWords(context, valueOf(*keys, "Service", "ExecStart"));
    if (!words.empty()) {
        facts.program = words.front();
    }
    facts.application = entryForStartupItem(context, facts.label, words);
    facts.startsAtLogin =
        keys->at("Service").contains("Restart") || isWanted(context, enabledFolder(context), file.filename().string());
    return facts;
}

} // namespace vellmoor
