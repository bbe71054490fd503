#include "login/StartupItems.h"

#include "desktop/AppNames.h"
#include "disk/Paths.h"
#include "found/ScanSnapshot.h"
#include "login/StartupEntries.h"
#include "scan/PathMeasurement.h"

#include <algorithm>
#include <map>

namespace vellmoor {
namespace {

std::optional<StartupFacts> factsOf(EngineContext& context, const Path& file, StartupKind kind) {
    switch (kind) {
    case StartupKind::LaunchAgent:
        return launchAgentFacts(context, file);
    case StartupKind::Autostart:
        return autostartFacts(context, file);
    case StartupKind::UserService:
        return userServiceFacts(context, file);
    }
    return std::nullopt;
}

/// Where many items may start one application each is its file; elsewhere it is the application's, else the agent's.
std::string identifierOf(EngineContext& context, const StartupFacts& facts, const Path& file) {
    if (context.layout().startup.filesNameItems) {
        return file.string();
    }
    const std::optional<std::string> application =
        facts.application ? appIdentifier(context, *facts.application) : std::nullopt;
    return application.value_or(facts.label);
}

std::string nameOf(EngineContext& context, const StartupFacts& facts, const Path& file) {
    if (!facts.ownName.empty()) {
        return facts.ownName;
    }
    return facts.application ? appDisplayName(context, *facts.application)
                             : friendlyName(facts.label, file.stem().string());
}

/// Adds the file to a name that several items bear.
void tellApart(const Platform& platform, std::vector<StartupItem>& items) {
    std::map<std::string, int> bearers;
    for (const StartupItem& item : items) {
        ++bearers[platform.lowerCase(item.name)];
    }
    for (StartupItem& item : items) {
        if (bearers.at(platform.lowerCase(item.name)) > 1) {
            item.name = L::tr("%@（%@）", item.name, displayName(item.plistURL));
        }
    }
}

/// The items of the files of that kind directly in `folder`; none when it cannot be listed.
std::vector<StartupItem> launchAgentItems(EngineContext& context, const Path& folder, StartupKind kind,
                                          bool isEnabled) {
    const std::string extension = "." + std::string(fileExtension(kind));
    std::vector<StartupItem> items;
    for (const Path& file : visibleChildren(context, folder)) {
        context.throwIfCancelled();
        if (file.extension() != extension) {
            continue;
        }
        if (std::optional<StartupItem> item = launchAgentItem(context, file, kind, isEnabled)) {
            items.push_back(*std::move(item));
        }
    }
    return items;
}

std::vector<Path> sessionStatePaths(EngineContext& context) {
    std::vector<RootPattern> patterns;
    for (const SessionState& state : context.layout().startup.sessionStates) {
        if (state.onlyWith.empty() || context.platform().exists(state.onlyWith)) {
            patterns.push_back(state.paths);
        }
    }
    return expandRoots(context, patterns);
}

} // namespace

std::string_view fileExtension(StartupKind kind) {
    switch (kind) {
    case StartupKind::LaunchAgent:
        return "plist";
    case StartupKind::Autostart:
        return "desktop";
    case StartupKind::UserService:
        return "service";
    }
    return "";
}

std::optional<StartupItem> launchAgentItem(EngineContext& context, const Path& file, StartupKind kind, bool isEnabled) {
    const std::optional<StartupFacts> facts = factsOf(context, file, kind);
    if (!facts) {
        return std::nullopt;
    }
    const bool hasProgram = facts->program && !facts->program->empty();
    return StartupItem{.id = identifierOf(context, *facts, file),
                       .name = nameOf(context, *facts, file),
                       .label = facts->label,
                       .description = hasProgram ? displayPath(context.layout(), *facts->program) : displayName(file),
                       .plistURL = file,
                       .appURL = facts->application,
                       .program = facts->program,
                       .isEnabled = isEnabled,
                       .startsAtLogin = facts->startsAtLogin};
}

std::vector<StartupItem> startupItems(EngineContext& context) {
    std::vector<StartupItem> items;
    for (const StartupFolders& folders : context.layout().startup.folders) {
        std::ranges::move(launchAgentItems(context, folders.enabled, folders.kind, true), std::back_inserter(items));
        std::ranges::move(launchAgentItems(context, folders.disabled, folders.kind, false), std::back_inserter(items));
    }
    if (context.layout().startup.filesNameItems) {
        tellApart(context.platform(), items);
    }
    std::ranges::stable_sort(items, [&](const StartupItem& a, const StartupItem& b) {
        if (a.isEnabled != b.isEnabled) {
            return a.isEnabled;
        }
        return context.platform().compareNames(a.name, b.name) < 0;
    });
    return items;
}

std::vector<CleanupItem> performanceItems(EngineContext& context) {
    const StartupLayout& layout = context.layout().startup;
    const CategorySpec shown{.module = CleanerModule::performance,
                             .key = rowKey(CleanerModule::performance, "autostart"),
                             .title = L::tr("用户启动代理"),
                             .description =
                                 L::tr(layout.shownDescription, displayPath(context.layout(), layout.shownFolder)),
                             .roots = visibleChildren(context, layout.shownFolder),
                             .symbol = "power",
                             .tint = Tint::green,
                             .risk = CleanupRisk::previewOnly,
                             .cleanable = false,
                             .selected = false};
    const CategorySpec states{.module = CleanerModule::performance,
                              .key = rowKey(CleanerModule::performance, "sessionStates"),
                              .title = L::tr("应用恢复状态"),
                              .description = L::tr("窗口恢复状态和临时会话文件"),
                              .roots = sessionStatePaths(context),
                              .symbol = "clock.arrow.circlepath",
                              .tint = Tint::cyan,
                              .risk = CleanupRisk::cautious,
                              .cleanable = true,
                              .selected = false};
    return {categoryItem(context, shown), categoryItem(context, states)};
}

} // namespace vellmoor
