// Switching login items off and on: their configuration moves between two folders, nothing is ever removed.
#include "Platform.h"
#include "desktop/DesktopEntries.h"
#include "disk/Paths.h"
#include "found/ScanSnapshot.h"
#include "login/StartupEntries.h"
#include "login/StartupItems.h"
#include "login/StartupMasks.h"

#include <algorithm>

namespace vellmoor {
namespace {

const StartupFolders& foldersOf(const StartupLayout& layout, const Path& file) {
    const auto found = std::ranges::find_if(layout.folders, [&](const StartupFolders& folders) {
        return file.extension() == "." + std::string(fileExtension(folders.kind));
    });
    return found == layout.folders.end() ? layout.folders.front() : *found;
}

StartupActionResult failed(std::string message) {
    return {.succeeded = false, .message = std::move(message)};
}

/// A name that is free in `folder`, else one with the time; only one alternative is tried.
Path uniqueDisabledURL(const EngineContext& context, const Path& name, const Path& folder) {
    const Path candidate = folder / name;
    if (!context.platform().exists(candidate)) {
        return candidate;
    }
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(context.now().time_since_epoch()).count();
    return folder / (name.stem().string() + "-" + std::to_string(seconds) + name.extension().string());
}

/// Tells the system's service manager. What it answers is dropped on purpose: an item that is not loaded must be
/// switchable, too.
class Loader {
public:
    Loader(const EngineContext& context, StartupKind kind) : context_(context), kind_(kind) {}

    void unload(const Path& file) const;
    void forget() const;
    void load(const Path& file, bool starts) const;

private:
    void run(const std::vector<std::string>& arguments) const;
    [[nodiscard]] std::string launchDomain() const { return "gui/" + std::to_string(context_.platform().userId()); }
    [[nodiscard]] static bool isUnitName(std::string_view name);

    const EngineContext& context_;
    StartupKind kind_;
};

void Loader::run(const std::vector<std::string>& arguments) const {
    const StartupLayout& layout = context_.layout().startup;
    const Platform& platform = context_.platform();
    if (!layout.loaderIsOptional && !layout.loaders.empty()) {
        (void)platform.commandResult(layout.loaders.front(), arguments);
        return;
    }
    const auto loader =
        std::ranges::find_if(layout.loaders, [&](const Path& tool) { return platform.isExecutable(tool); });
    const bool hasManager = !layout.managerSocket.empty() && platform.exists(layout.managerSocket);
    if (hasManager && loader != layout.loaders.end()) {
        (void)platform.commandResult(*loader, arguments);
    }
}

/// Anything else would be taken for an option or a pattern.
bool Loader::isUnitName(std::string_view name) {
    return !name.starts_with('-') && std::ranges::all_of(name, [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
               std::string_view(":-_.\\@").find(c) != std::string_view::npos;
    });
}

void Loader::unload(const Path& file) const {
    const std::string name = file.filename().string();
    switch (kind_) {
    case StartupKind::LaunchAgent:
        return run({"bootout", launchDomain(), file.string()});
    case StartupKind::Autostart:
        // Never a scope: a program that was started by hand lies in one of the same name.
        return run({"--user", "stop", "app-" + unitNameEscape(file.stem().string()) + "@autostart.service"});
    case StartupKind::UserService:
        if (isUnitName(name)) {
            run({"--user", "stop", name});
        }
    }
}

/// After a configuration has gone.
void Loader::forget() const {
    if (kind_ != StartupKind::LaunchAgent) {
        run({"--user", "daemon-reload"});
    }
}

void Loader::load(const Path& file, bool starts) const {
    const std::string name = file.filename().string();
    switch (kind_) {
    case StartupKind::LaunchAgent:
        return run({"bootstrap", launchDomain(), file.string()});
    case StartupKind::Autostart:
        run({"--user", "daemon-reload"});
        return run({"--user", "start", "app-" + unitNameEscape(file.stem().string()) + "@autostart.service"});
    case StartupKind::UserService:
        run({"--user", "daemon-reload"});
        if (starts && isUnitName(name)) {
            run({"--user", "start", name});
        }
    }
}

/// The name in the file itself: another program may show the mask.
std::string writtenName(const EngineContext& context, const Path& file, const std::string& fallback) {
    const std::optional<KeyFile> keys = context.platform().keyFile(file);
    const std::string name = keys ? valueOf(*keys, entryGroup, "Name") : std::string();
    return name.empty() ? fallback : name;
}

/// Moves the configuration away and masks its name where that is needed; all of it or nothing.
Outcome moveAway(const EngineContext& context, const StartupItem& item, const StartupFolders& folders,
                 const Path& destination) {
    const Platform& platform = context.platform();
    const bool masks = needsStartupMask(context, folders, item.plistURL);
    const std::string name = masks ? writtenName(context, item.plistURL, item.name) : std::string();
    if (Outcome moved = platform.moveItem(item.plistURL, destination); !moved || !masks) {
        return moved;
    }
    Outcome masked = createStartupMask(platform, folders.kind, item.plistURL, name);
    if (!masked) {
        if (const Outcome undone = platform.moveItem(destination, item.plistURL); !undone) {
            return std::unexpected(masked.error() + "\n" + undone.error());
        }
    }
    return masked;
}

/// Moves the configuration back. A mask makes room for it, and comes back when the move fails.
Outcome moveBack(const EngineContext& context, const StartupItem& item, StartupKind kind, const Path& destination,
                 bool isMasked) {
    const Platform& platform = context.platform();
    if (!isMasked) {
        return platform.moveItem(item.plistURL, destination);
    }
    const std::string name = writtenName(context, destination, item.name);
    if (Outcome removed = platform.removeFile(destination); !removed) {
        return removed;
    }
    Outcome moved = platform.moveItem(item.plistURL, destination);
    if (!moved) {
        if (const Outcome undone = createStartupMask(platform, kind, destination, name); !undone) {
            return std::unexpected(moved.error() + "\n" + undone.error());
        }
    }
    return moved;
}

} // namespace

StartupActionResult disableStartupItem(EngineContext& context, const StartupItem& item) {
    if (!item.isEnabled) {
        return failed(L::tr("%@ 已经是禁用状态。", item.name));
    }
    if (!context.platform().exists(item.plistURL)) {
        return failed(L::tr("未找到启动项配置：%@。", displayName(item.plistURL)));
    }
    const StartupFolders& folders = foldersOf(context.layout().startup, item.plistURL);
    const Path destination = uniqueDisabledURL(context, item.plistURL.filename(), folders.disabled);
    if (const Outcome created = context.platform().createFolder(folders.disabled); !created) {
        return failed(L::tr("禁用 %@ 失败：%@", item.name, created.error()));
    }
    const Loader loader(context, folders.kind);
    loader.unload(item.plistURL);
    if (const Outcome moved = moveAway(context, item, folders, destination); !moved) {
        return failed(L::tr("禁用 %@ 失败：%@", item.name, moved.error()));
    }
    loader.forget();
    return {.succeeded = true, .message = L::tr("已禁用 %@ 的开机自启动。", item.name), .file = destination};
}

StartupActionResult enableStartupItem(EngineContext& context, const StartupItem& item) {
    if (item.isEnabled) {
        return failed(L::tr("%@ 已经是启用状态。", item.name));
    }
    const Platform& platform = context.platform();
    if (!platform.exists(item.plistURL)) {
        return failed(L::tr("未找到已禁用配置：%@。", displayName(item.plistURL)));
    }
    const StartupFolders& folders = foldersOf(context.layout().startup, item.plistURL);
    const Path destination = folders.enabled / item.plistURL.filename();
    if (const Outcome created = platform.createFolder(folders.enabled); !created) {
        return failed(L::tr("恢复 %@ 失败：%@", item.name, created.error()));
    }
    const bool exists = platform.exists(destination);
    const bool isMasked = exists && isStartupMask(platform, folders.kind, destination);
    if (exists && !isMasked) {
        return failed(L::tr("启用失败：LaunchAgents 中已存在同名配置。"));
    }
    if (const Outcome moved = moveBack(context, item, folders.kind, destination, isMasked); !moved) {
        return failed(L::tr("恢复 %@ 失败：%@", item.name, moved.error()));
    }
    Loader(context, folders.kind).load(destination, item.startsAtLogin);
    return {.succeeded = true, .message = L::tr("已恢复 %@ 的开机自启动。", item.name), .file = destination};
}

} // namespace vellmoor
