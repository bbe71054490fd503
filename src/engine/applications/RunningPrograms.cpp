#include "applications/AppUninstaller.h"
#include "applications/Applications.h"
#include "disk/Paths.h"

#include <algorithm>

namespace vellmoor {

RunningPrograms::RunningPrograms(EngineContext& context, const LinuxProcesses& processes) : context_(context) {
    for (const RunningApplication& application : context.platform().runningApplications()) {
        if (!application.bundlePath.empty()) {
            bundlePaths_.insert(context.platform().standardized(application.bundlePath));
        }
        if (application.bundleIdentifier) {
            identifiers_.insert(*application.bundleIdentifier);
        }
    }
    if (!context.layout().memory.processes.folder.empty()) {
        read(processes);
    }
}

void RunningPrograms::read(const LinuxProcesses& processes) {
    const Platform& platform = context_.platform();
    for (const std::int32_t pid : processes.pids()) {
        if (const std::optional<Path> program = processes.executable(pid)) {
            programs_.insert(platform.realPath(*program).value_or(*program));
        }
        // The program of an AppImage lies in a mount that exists only while it runs; what runs is the file.
        if (const std::optional<Path> image = processes.appImage(pid)) {
            programs_.insert(platform.realPath(*image).value_or(*image));
        }
        if (std::string id = processes.flatpak(pid); !id.empty()) {
            flatpaks_.insert(std::move(id));
        }
    }
}

bool RunningPrograms::runs(const ApplicationMetadata& application) const {
    const std::optional<std::string>& identifier = application.bundleIdentifier;
    switch (application.kind) {
    case ApplicationKind::Bundle:
        return bundlePaths_.contains(context_.platform().standardized(application.appURL)) ||
               (identifier && identifiers_.contains(*identifier));
    case ApplicationKind::Flatpak:
        return identifier && flatpaks_.contains(*identifier);
    case ApplicationKind::AppImage:
    case ApplicationKind::ProgramFolder:
        return runsProgramOf(context_.platform().realPath(application.appURL).value_or(application.appURL));
    }
    return false;
}

bool applicationRuns(EngineContext& context, const CleanupItem& row) {
    if (!row.appInfo) {
        return false;
    }
    const Path body = row.appInfo->appPath;
    const bool isFlatpak = isFlatpakBody(context, body);
    const std::string extension = context.platform().lowerCase(body.extension().string());
    const bool isBundle = extension == "." + context.layout().apps.bundleExtension;
    const LinuxProcesses now(context.platform(), context.layout());
    return RunningPrograms(context, now)
        .runs({.appURL = body,
               .displayName = row.title,
               .unlocalizedName = {},
               .bundleIdentifier = row.appInfo->bundleIdentifier,
               .kind = isFlatpak  ? ApplicationKind::Flatpak
                       : isBundle ? ApplicationKind::Bundle
                                  : ApplicationKind::ProgramFolder});
}

bool RunningPrograms::runsProgramOf(const Path& application) const {
    return std::ranges::any_of(programs_, [&](const Path& program) { return isAtOrBelow(program, application); });
}

} // namespace vellmoor
