#include "login/StartupItems.h"

#include "Paths.h"
#include "ScanSnapshot.h"
#include "applications/AppUninstaller.h"
#include "login/StartupEntries.h"
#include "scan/PathMeasurement.h"

#include <algorithm>

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

std::string nameOf(EngineContext& context, const StartupFacts& facts, const Path& file) {
    if (facts.application) {
        return appDisplayName(context, *facts.application);
    }
    return facts.ownName.empty() ? friendlyName(facts.label, file.stem().string()) : facts.ownName;
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
    std::optional<std::string> identifier;
    if (facts->application) {
        identifier = appIdentifier(context, *facts->application);
    }
    const bool hasProgram = facts->program && !facts->program->empty();
    return StartupItem{.id = identifier.value_or(facts->label),
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
