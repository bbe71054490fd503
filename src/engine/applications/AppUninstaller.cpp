#include "applications/AppUninstaller.h"

#include "CheckedMath.h"
#include "PercentText.h"
#include "applications/Applications.h"
#include "applications/Leftovers.h"
#include "desktop/DesktopEntries.h"
#include "disk/Glob.h"
#include "disk/Paths.h"
#include "found/ScanSnapshot.h"
#include "scan/PathMeasurement.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace vellmoor {
namespace {

/// An application with everything that is measured about it.
struct ApplicationScan {
    Path appURL;
    std::string name;
    std::optional<std::string> bundleIdentifier;
    PathStats appStats;
    std::string heldBack; ///< why the application stays
    std::vector<Offer> residuals;
    PathStats residualStats;
    ApplicationKind kind = ApplicationKind::Bundle;

    [[nodiscard]] std::int64_t totalBytes() const { return checkedAdd(appStats.bytes, residualStats.bytes); }
};

/// `application` is what is offered of the body.
ApplicationScan applicationScan(EngineContext& context, const ApplicationMetadata& metadata, const Offer& application,
                                const std::vector<Path>& residuals) {
    ApplicationScan scan{.appURL = metadata.appURL,
                         .name = metadata.displayName,
                         .bundleIdentifier = metadata.bundleIdentifier,
                         .appStats = stats(context, metadata.appURL),
                         .heldBack = application.heldBack,
                         .residuals = {},
                         .residualStats = {},
                         .kind = metadata.kind};
    for (const Path& path : residuals) {
        std::ranges::move(offersOf(context, path, Splitting::Along), std::back_inserter(scan.residuals));
    }
    for (const Offer& residual : scan.residuals) {
        context.throwIfCancelled();
        const PathStats measured = stats(context, residual.path);
        scan.residualStats.bytes = checkedAdd(scan.residualStats.bytes, measured.bytes);
        scan.residualStats.files = checkedAdd(scan.residualStats.files, measured.files);
    }
    return scan;
}

/// The application first, then its leftovers.
std::vector<CleanupTarget> appTargets(EngineContext& context, const ApplicationScan& scan, bool selected) {
    std::vector<CleanupTarget> targets{target(context, scan.appURL, scan.appStats, selected)};
    targets.back().heldBack = scan.heldBack;
    for (const Offer& residual : scan.residuals) {
        targets.push_back(target(context, residual, selected));
    }
    return targets;
}

std::string description(const ApplicationScan& scan, bool isRunning) {
    std::string text =
        scan.residuals.empty() ? L::tr("未发现明显残留") : L::tr("发现 %d 个关联残留", scan.residuals.size());
    if (scan.bundleIdentifier) {
        text += L::tr("，bundle id：%@", *scan.bundleIdentifier);
    }
    if (isRunning) {
        text += L::tr("，应用正在运行，请先退出");
    }
    if (!scan.heldBack.empty()) {
        text += L::tr("，其中有你保留的项目");
    }
    if (scan.kind == ApplicationKind::Flatpak) {
        text += L::tr("，将由 Flatpak 直接卸载，不经过废纸篓");
    }
    return text;
}

CleanupItem applicationItem(EngineContext& context, const ApplicationScan& scan, bool isRunning) {
    CleanupItem item;
    item.module = CleanerModule::appUninstaller;
    item.key = percentEncoded(scan.appURL.native());
    item.title = scan.name;
    item.description = description(scan, isRunning);
    item.bytes = scan.totalBytes();
    item.files = checkedAdd(scan.appStats.files, scan.residualStats.files);
    item.symbol = "app.dashed";
    item.tint = Tint::orange;
    item.isCleanable =
        !isRunning && scan.heldBack.empty() && (scan.kind != ApplicationKind::Flatpak || flatpakTool(context));
    item.risk = item.isCleanable ? CleanupRisk::high : CleanupRisk::previewOnly;
    item.appInfo = AppCleanupInfo{.bundleIdentifier = scan.bundleIdentifier,
                                  .appPath = scan.appURL.string(),
                                  .appBytes = scan.appStats.bytes,
                                  .residualBytes = scan.residualStats.bytes,
                                  .residualCount = static_cast<std::int64_t>(scan.residuals.size()),
                                  .isRunning = isRunning};
    item.targets = appTargets(context, scan, false);
    item.isAtLeast = std::ranges::any_of(item.targets, &CleanupTarget::isAtLeast);
    return item;
}

/// How many applications of the package managers the menus of this desktop show.
std::size_t systemApplications(EngineContext& context) {
    const AppLayout& layout = context.layout().apps;
    std::set<std::string> identifiers;
    const auto count = [&](const InstalledEntry& entry) {
        if (!entry.noDisplay && !entry.hidden && isForDesktop(context, entry, context.layout().startup.desktops)) {
            identifiers.insert(entry.id);
        }
    };
    for (const Path& folder : layout.systemEntryFolders) {
        context.throwIfCancelled();
        if (std::ranges::find(layout.entryFolders, folder) == layout.entryFolders.end()) {
            std::ranges::for_each(entriesOfFolder(context, folder), count); // the user's variables leave it out
            continue;
        }
        for (const InstalledEntry& entry : installedEntries(context)) {
            if (isStrictlyBelow(entry.path, folder)) {
                count(entry);
            }
        }
    }
    return identifiers.size();
}

CleanupItem systemApplicationsItem(std::size_t count) {
    CleanupItem item;
    item.module = CleanerModule::appUninstaller;
    item.title = L::tr("系统管理的应用");
    item.description = L::tr("%d 个应用由系统软件包管理，请在软件中心卸载", count);
    item.symbol = "shippingbox";
    item.tint = Tint::gray;
    return item; // without targets: previewOnly, not cleanable
}

} // namespace

std::vector<ApplicationMetadata> removableApplications(EngineContext& context) {
    std::vector<ApplicationMetadata> found = installedBundles(context);
    std::ranges::move(unpackagedApplications(context), std::back_inserter(found));
    return found;
}

std::vector<CleanupItem> applicationItems(EngineContext& context) {
    const std::vector<ApplicationMetadata> applications = removableApplications(context);
    const LeftoverFinder leftovers(context, applications);
    const RunningPrograms running(context, LinuxProcesses::of(context));

    std::vector<std::pair<ApplicationScan, bool>> scans;
    for (std::size_t i = 0; i < applications.size(); ++i) {
        context.throwIfCancelled();
        // A kept application is not listed, and what belongs to it stays with it.
        for (const Offer& offer : offersOf(context, applications[i].appURL, Splitting::Never)) {
            scans.emplace_back(applicationScan(context, applications[i], offer, leftovers.residualPaths(i)),
                               running.runs(applications[i]));
        }
    }
    std::ranges::stable_sort(scans, std::ranges::greater(), [](const auto& scan) { return scan.first.totalBytes(); });

    std::vector<CleanupItem> items;
    for (const auto& [scan, isRunning] : scans) {
        context.throwIfCancelled();
        items.push_back(applicationItem(context, scan, isRunning));
    }
    if (const std::size_t count = systemApplications(context); count > 0) {
        items.push_back(systemApplicationsItem(count));
    }
    return items;
}

} // namespace vellmoor
