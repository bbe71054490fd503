#include "processes/ProcessTable.h"

#include "processes/LinuxProcesses.h"

namespace vellmoor {
namespace {

std::optional<std::string> listing(const Platform& platform, const ToolCall& call) {
    return call.tool.empty() ? std::nullopt : platform.commandOutput(call.tool, call.arguments);
}

/// The part behind the last slash; slashes at the end do not count.
std::string lastComponent(std::string_view path) {
    const std::size_t end = path.find_last_not_of('/');
    if (end == std::string_view::npos) {
        return std::string(path.substr(0, 1));
    }
    path = path.substr(0, end + 1);
    return std::string(path.substr(path.rfind('/') + 1));
}

std::set<std::string> listedNames(const Platform& platform, const ToolCall& call) {
    std::set<std::string> names;
    const std::string text = listing(platform, call).value_or("");
    for (const std::string_view line : lines(text)) {
        names.insert(lastComponent(line));
    }
    return names;
}

void addNames(const LinuxProcesses& processes, std::int32_t pid, std::set<std::string>& names) {
    const std::optional<Path> program = processes.executable(pid);
    if (!program && processes.hasEnded(pid)) {
        return;
    }
    if (const std::string id = processes.flatpak(pid); !id.empty()) {
        names.insert("flatpak:" + id);
        return;
    }
    if (const std::string snap = processes.snap(pid); !snap.empty()) {
        names.insert("snap:" + snap);
        if (program && !processes.snapOf(*program).empty()) {
            return;
        }
        // In the snap's group, but none of its programs: a browser started from a terminal that is a snap.
    }
    if (program) {
        names.insert(lastComponent(program->native()));
    }
    if (std::string name = processes.name(pid); !name.empty()) {
        names.insert(std::move(name));
    }
}

std::set<std::string> ownNames(const LinuxProcesses& processes) {
    std::set<std::string> names;
    for (const std::int32_t pid : processes.pids()) {
        addNames(processes, pid, names);
    }
    return names;
}

std::vector<ProcessMemorySample> ownSamples(const LinuxProcesses& processes) {
    std::vector<ProcessMemorySample> samples;
    for (const std::int32_t pid : processes.pids()) {
        if (const std::optional<std::int64_t> bytes = processes.residentBytes(pid)) {
            const std::optional<ProcessLine> line = processes.line(pid);
            samples.push_back({.pid = pid,
                               .bytes = *bytes,
                               .command = processes.executable(pid).value_or("").native(),
                               .started = line ? line->started : 0});
        }
    }
    return samples;
}

} // namespace

std::set<std::string> runningProcessNames(const Platform& platform, const SystemLayout& layout) {
    if (layout.memory.processes.folder.empty()) {
        return listedNames(platform, layout.memory.processes.names);
    }
    return ownNames(LinuxProcesses(platform, layout));
}

const std::set<std::string>& runningNames(EngineContext& context) {
    struct Known {
        std::optional<std::set<std::string>> names;
    };
    std::optional<std::set<std::string>>& known = context.remembered<Known>().names;
    if (!known) {
        const bool ofTool = context.layout().memory.processes.folder.empty();
        known =
            ofTool ? runningProcessNames(context.platform(), context.layout()) : ownNames(LinuxProcesses::of(context));
    }
    return *known;
}

std::vector<ProcessMemorySample> processMemorySamples(const Platform& platform, const SystemLayout& layout,
                                                      const LinuxProcesses& processes) {
    if (!layout.memory.processes.folder.empty()) {
        return ownSamples(processes);
    }
    std::vector<ProcessMemorySample> samples;
    const std::string text = listing(platform, layout.memory.processes.memory).value_or("");
    for (const std::string_view line : lines(text)) {
        if (auto sample = processMemorySample(line)) {
            samples.push_back(std::move(*sample));
        }
    }
    return samples;
}

} // namespace vellmoor
