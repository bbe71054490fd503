#include "applications/AppUninstaller.h"
#include "disk/Paths.h"

#include <algorithm>

namespace vellmoor {
namespace {

/// The folders in `folder`, links left out, in the order of their names.
std::vector<std::string> folderNames(const EngineContext& context, const Path& folder) {
    std::vector<std::string> names;
    const auto entries = context.platform().entries(folder);
    if (!entries) {
        return names; // then there is nothing to uninstall, which the caller says
    }
    for (const FolderEntry& entry : *entries) {
        if (entry.isDirectory && !entry.isSymlink) {
            names.push_back(entry.name);
        }
    }
    std::ranges::sort(names);
    return names;
}

/// "app/ID/ARCH/BRANCH" of every installed version.
std::vector<std::string> installedRefs(const EngineContext& context, const Path& body) {
    std::vector<std::string> refs;
    for (const std::string& machine : folderNames(context, body)) {
        for (const std::string& branch : folderNames(context, body / machine)) {
            refs.push_back("app/" + displayName(body) + "/" + machine + "/" + branch);
        }
    }
    return refs;
}

std::string failureText(const CommandResult& result) {
    std::string text = result.combinedOutput();
    while (!text.empty() && (text.back() == '\n' || text.back() == ' ')) {
        text.pop_back();
    }
    return text.empty() ? "flatpak: " + std::to_string(result.status) : text;
}

} // namespace

bool isFlatpakBody(const EngineContext& context, const Path& path) {
    const Path folder = lexicallyStandardized(path).parent_path();
    const std::optional<Path> real = context.platform().realPath(folder);
    return std::ranges::any_of(context.layout().apps.flatpakFolders, [&](const Path& flatpaks) {
        return folder == flatpaks || (real && real == context.platform().realPath(flatpaks));
    });
}

std::optional<Path> flatpakTool(const EngineContext& context) {
    const std::vector<Path>& tools = context.layout().apps.flatpakTools;
    const auto found =
        std::ranges::find_if(tools, [&](const Path& tool) { return context.platform().isExecutable(tool); });
    return found == tools.end() ? std::nullopt : std::optional(*found);
}

Outcome uninstallFlatpak(const EngineContext& context, const Path& body) {
    const std::optional<Path> tool = flatpakTool(context);
    if (!tool) {
        return std::unexpected("flatpak: No such file or directory");
    }
    const std::vector<std::string> refs = installedRefs(context, lexicallyStandardized(body));
    if (refs.empty()) {
        return std::unexpected("flatpak: No installed version");
    }
    Outcome outcome;
    for (const std::string& ref : refs) { // a failure keeps no other version from being removed
        const CommandResult result =
            context.platform().commandResult(*tool, {"uninstall", "--user", "--noninteractive", "--assumeyes", ref});
        if (result.status != 0 && outcome) {
            outcome = std::unexpected(failureText(result));
        }
    }
    return outcome;
}

} // namespace vellmoor
