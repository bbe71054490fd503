#include "CheckedMath.h"
#include "memory/Memory.h"
#include "processes/ProcessApplications.h"
#include "processes/ProcessTable.h"

#include <algorithm>
#include <map>

namespace vellmoor {
namespace {

constexpr std::size_t listedApps = 8;

using Samples = std::vector<ProcessMemorySample>;

std::int64_t sumOf(const Samples& samples) {
    std::int64_t sum = 0;
    for (const ProcessMemorySample& sample : samples) {
        sum = checkedAdd(sum, sample.bytes);
    }
    return sum;
}

MemoryApp appOf(ProcessApplications& applications, const std::string& key, const Samples& samples) {
    MemoryApp app = applications.describe(key, samples.front());
    app.bytes = sumOf(samples);
    app.processCount = static_cast<std::int64_t>(samples.size());
    for (const ProcessMemorySample& sample : samples) {
        app.pids.push_back(sample.pid);
        app.starts.push_back(sample.started);
    }
    return app;
}

/// Every application with its processes, in no order that matters.
std::vector<MemoryApp> allApps(EngineContext& context, const LinuxProcesses& processes) {
    const MemoryLayout& layout = context.layout().memory;
    const Samples samples = processMemorySamples(context.platform(), context.layout(), processes);
    const std::unique_ptr<ProcessApplications> applications =
        layout.processes.folder.empty() ? bundleApplications(context) : entryApplications(context, processes, samples);

    std::map<std::string, Samples> groups;
    for (const ProcessMemorySample& sample : samples) {
        if (const auto key = applications->keyOf(sample)) {
            groups[*key].push_back(sample);
        }
    }
    std::erase_if(groups, [](const auto& group) { return sumOf(group.second) < 1; });

    std::vector<MemoryApp> apps;
    apps.reserve(groups.size());
    for (const auto& [key, group] : groups) {
        apps.push_back(appOf(*applications, key, group));
    }
    return apps;
}

} // namespace

std::vector<MemoryApp> memoryApps(EngineContext& context) {
    std::vector<MemoryApp> apps = allApps(context, LinuxProcesses::of(context));
    std::ranges::stable_sort(apps, std::ranges::greater(), &MemoryApp::bytes);
    apps.resize(std::min(apps.size(), listedApps));
    return apps;
}

MemoryApp withLivingProcesses(EngineContext& context, const MemoryApp& app) {
    const LinuxProcesses now(context.platform(), context.layout()); // asked again and again while they end
    const std::vector<MemoryApp> apps = allApps(context, now);
    const auto found = std::ranges::find_if(apps, [&](const MemoryApp& one) { return app.isStill(one); });
    return app.withProcessesOf(found != apps.end() ? *found : MemoryApp());
}

} // namespace vellmoor
