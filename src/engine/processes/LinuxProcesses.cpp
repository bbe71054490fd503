#include "processes/LinuxProcesses.h"

#include "disk/Paths.h"
#include "processes/ControlGroups.h"
#include "processes/MemoryText.h"

#include <algorithm>
#include <array>
#include <future>
#include <iterator>
#include <system_error>
#include <utility>

namespace vellmoor {
namespace {

/// The kernel limits arguments and variables together to a quarter of the stack limit, usually 2 MiB (execve(2)).
constexpr std::size_t largestFile = std::size_t{4} * 1024 * 1024;

/// Without the mark that the kernel puts behind the path of a program that was deleted or replaced (proc_pid_exe(5)).
Path withoutMark(const Path& program) {
    std::string text = program.native();
    if (constexpr std::string_view mark = " (deleted)"; text.ends_with(mark)) {
        text.resize(text.size() - mark.size());
    }
    return text;
}

/// A call's look at the processes.
struct Look {
    std::shared_future<LinuxProcesses> ahead; ///< begun on another thread; not valid: it was not
    std::optional<LinuxProcesses> processes;
};

} // namespace

Path LinuxProcesses::file(std::int32_t pid, std::string_view name) const {
    std::string path = layout_.memory.processes.folder.native();
    ((path += '/') += std::to_string(pid)) += '/';
    return path += name;
}

const LinuxProcesses& LinuxProcesses::of(EngineContext& context) {
    Look& look = context.remembered<Look>();
    if (look.ahead.valid()) {
        return look.ahead.get();
    }
    return look.processes ? *look.processes : look.processes.emplace(context.platform(), context.layout());
}

void LinuxProcesses::lookAhead(EngineContext& context) {
    Look& look = context.remembered<Look>();
    if (look.ahead.valid() || look.processes || context.layout().memory.processes.folder.empty()) {
        return;
    }
    const auto read = [processes = LinuxProcesses(context.platform(), context.layout())]() mutable {
        processes.readAll();
        return std::move(processes);
    };
    try {
        look.ahead = std::async(std::launch::async, read).share();
    } catch (const std::system_error&) {
        look.ahead = {}; // no thread to be had: it is read when it is asked for
    }
}

/// What a Smart Scan asks of each process, every other one on one more thread: the time is the kernel's, which makes
/// each of these files when it is read.
void LinuxProcesses::readAll() {
    std::array<std::vector<std::int32_t>, 2> halves;
    for (std::size_t index = 0; const std::int32_t pid : allPids()) {
        halves[index++ % 2].push_back(pid);
    }
    LinuxProcesses other(platform_, layout_);
    std::future<void> otherHalf = std::async([&] { other.read(halves[1]); }); // here, when no thread is to be had
    read(halves[0]);
    otherHalf.get();
    known_.merge(other.known_);
    pids_->insert(pids_->end(), other.pids_->begin(), other.pids_->end());
    std::ranges::sort(*pids_);
}

void LinuxProcesses::read(std::span<const std::int32_t> some) {
    std::vector<std::int32_t>& found = pids_.emplace();
    std::ranges::copy_if(some, std::back_inserter(found), [this](std::int32_t pid) { return isProgramOfUser(pid); });
    for (const std::int32_t pid : found) {
        (void)executable(pid);
        (void)flatpak(pid);
        for (const std::string_view name : {"stat", "statm", "cgroup", "comm", "environ"}) {
            (void)contents(pid, name);
        }
    }
}

const std::string& LinuxProcesses::contents(std::int32_t pid, std::string_view name) const {
    auto& files = known_[pid].files;
    const auto known = files.find(name);
    return known != files.end()
               ? known->second
               : files.emplace(name, platform_.fileContents(file(pid, name), largestFile).value_or("")).first->second;
}

bool LinuxProcesses::isOwn(std::int32_t pid) const {
    if (const std::optional<std::uint32_t> user = effectiveUser(contents(pid, "status"))) {
        return *user == platform_.userId();
    }
    const std::optional<FileFacts> facts = platform_.facts(layout_.memory.processes.folder / std::to_string(pid));
    return facts && facts->owner == platform_.userId();
}

bool LinuxProcesses::isKernelThread(std::int32_t pid) const {
    const std::optional<ProcessLine> process = line(pid);
    return process && process->isKernelThread;
}

std::vector<std::int32_t> LinuxProcesses::allPids() const {
    std::vector<std::int32_t> found;
    const auto children = platform_.entries(layout_.memory.processes.folder);
    if (!children) {
        return found;
    }
    for (const FolderEntry& child : *children) {
        const bool numeric = child.name.find_first_not_of("0123456789") == std::string::npos;
        if (const std::optional<std::int32_t> pid = numeric ? decimal<std::int32_t>(child.name) : std::nullopt) {
            found.push_back(*pid);
        }
    }
    std::ranges::sort(found);
    return found;
}

const std::vector<std::int32_t>& LinuxProcesses::pids() const {
    if (!pids_) {
        pids_ = allPids();
        std::erase_if(*pids_, [this](std::int32_t pid) { return !isProgramOfUser(pid); });
    }
    return *pids_;
}

const std::optional<Path>& LinuxProcesses::executable(std::int32_t pid) const {
    std::optional<std::optional<Path>>& known = known_[pid].executable;
    if (!known) {
        const std::optional<Path> target = platform_.linkTarget(file(pid, "exe"));
        known = target ? std::optional(placed(withoutMark(*target), layout_.home, layout_.root)) : std::nullopt;
    }
    return *known;
}

std::string LinuxProcesses::name(std::int32_t pid) const {
    std::string name = contents(pid, "comm");
    if (name.ends_with('\n')) {
        name.pop_back();
    }
    return name;
}

std::optional<std::int64_t> LinuxProcesses::residentBytes(std::int32_t pid) const {
    return vellmoor::residentBytes(contents(pid, "statm"), layout_.memory.processes.pageBytes);
}

std::optional<std::int32_t> LinuxProcesses::parent(std::int32_t pid) const {
    const std::string& status = contents(pid, "status");
    const std::optional<std::string_view> value = statusValue(status, "PPid:");
    return value ? decimal<std::int32_t>(*value) : std::nullopt;
}

std::optional<ProcessLine> LinuxProcesses::line(std::int32_t pid) const {
    return parseProcessLine(contents(pid, "stat"));
}

bool LinuxProcesses::hasEnded(std::int32_t pid) const {
    const std::string& text = contents(pid, "stat");
    return !text.empty() && !parseProcessLine(text);
}

std::vector<std::string> LinuxProcesses::arguments(std::int32_t pid) const {
    std::vector<std::string> words;
    const std::string& all = contents(pid, "cmdline");
    for (std::string_view rest = all; !rest.empty();) {
        const std::size_t end = std::min(rest.find('\0'), rest.size());
        words.emplace_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return words;
}

std::string LinuxProcesses::group(std::int32_t pid) const {
    return std::string(unifiedGroup(contents(pid, "cgroup")));
}

const std::string& LinuxProcesses::environment(std::int32_t pid) const {
    return contents(pid, "environ");
}

std::optional<Path> LinuxProcesses::appImage(std::int32_t pid) const {
    const std::string& variables = environment(pid);
    const auto image = environmentValue(variables, "APPIMAGE");
    const auto mounted = environmentValue(variables, "APPDIR");
    const std::optional<Path>& program = executable(pid);
    if (!image || !image->starts_with('/') || !mounted || !mounted->starts_with('/') || !program) {
        return std::nullopt;
    }
    const Path folder = placedPath(*mounted);
    const bool isInside =
        isStrictlyBelow(*program, folder) || isStrictlyBelow(*program, platform_.realPath(folder).value_or(folder));
    return isInside ? std::optional(placedPath(*image)) : std::nullopt;
}

Path LinuxProcesses::placedPath(std::string_view path) const {
    return placed(lexicallyStandardized(path), layout_.home, layout_.root);
}

std::string LinuxProcesses::flatpak(std::int32_t pid) const {
    std::optional<std::string>& known = known_[pid].flatpak;
    if (known) {
        return *known;
    }
    known = groupFlatpak(group(pid));
    if (known->empty()) {
        const std::optional<KeyFile> info = platform_.keyFile(file(pid, "root/.flatpak-info"));
        known = info ? valueOf(*info, "Application", "name") : std::string();
    }
    return *known;
}

std::string LinuxProcesses::snap(std::int32_t pid) const {
    if (std::string name = groupSnap(group(pid)); !name.empty()) {
        return name;
    }
    return snapOf(executable(pid).value_or(""));
}

std::string LinuxProcesses::snapOf(const Path& program) const {
    for (const char* mounts : {"/snap", "/var/lib/snapd/snap"}) {
        if (const Path folder = underRoot(layout_.root, mounts); isStrictlyBelow(program, folder)) {
            return program.lexically_relative(folder).begin()->string();
        }
    }
    return {};
}

} // namespace vellmoor
