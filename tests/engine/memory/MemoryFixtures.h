// Texts of real systems and stand-ins for /proc that the memory tests share.
#pragma once

#include "EngineHome.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

namespace vellmoor::test {

/// vm_stat of an Apple-silicon Mac with 16 GiB.
inline constexpr std::string_view appleVmStat = "Mach Virtual Memory Statistics: (page size of 16384 bytes)\n"
                                                "Pages free:                                   32768.\n"
                                                "Pages active:                                262144.\n"
                                                "Pages inactive:                              245760.\n"
                                                "Pages speculative:                            16384.\n"
                                                "Pages throttled:                                  0.\n"
                                                "Pages wired down:                            131072.\n"
                                                "Pages purgeable:                               8192.\n"
                                                "\"Translation faults\":                   3391280743.\n"
                                                "Pages copy-on-write:                      207131024.\n"
                                                "Pages zero filled:                       1842551121.\n"
                                                "Pages reactivated:                         91238176.\n"
                                                "Pages purged:                              14231562.\n"
                                                "File-backed pages:                           294912.\n"
                                                "Anonymous pages:                             229376.\n"
                                                "Pages stored in compressor:                  413696.\n"
                                                "Pages occupied by compressor:                 98304.\n"
                                                "Decompressions:                            84411265.\n"
                                                "Compressions:                             102236115.\n"
                                                "Pageins:                                   32164215.\n"
                                                "Pageouts:                                    412331.\n"
                                                "Swapins:                                     912384.\n"
                                                "Swapouts:                                   1203712.\n";

/// /proc/meminfo of a PC with 16 GiB.
inline constexpr std::string_view linuxMeminfo = "MemTotal:       16777216 kB\n"
                                                 "MemFree:         1048576 kB\n"
                                                 "MemAvailable:    9437184 kB\n"
                                                 "Buffers:          131072 kB\n"
                                                 "Cached:          7208960 kB\n"
                                                 "SwapCached:            0 kB\n"
                                                 "Active:          6291456 kB\n"
                                                 "Inactive:        7340032 kB\n"
                                                 "Active(anon):    4194304 kB\n"
                                                 "Inactive(anon):  2097152 kB\n"
                                                 "Active(file):    2097152 kB\n"
                                                 "Inactive(file):  5242880 kB\n"
                                                 "Unevictable:       65536 kB\n"
                                                 "Mlocked:              48 kB\n"
                                                 "SwapTotal:       8388608 kB\n"
                                                 "SwapFree:        8388608 kB\n"
                                                 "KReclaimable:     786432 kB\n"
                                                 "Slab:            1048576 kB\n"
                                                 "SReclaimable:     700000 kB\n"
                                                 "SUnreclaim:       262144 kB\n"
                                                 "KernelStack:       16384 kB\n"
                                                 "PageTables:        98304 kB\n"
                                                 "VmallocTotal:   34359738367 kB\n"
                                                 "Percpu:            12288 kB\n"
                                                 "HugePages_Total:       0\n"
                                                 "Hugepagesize:       2048 kB\n"
                                                 "Hugetlb:               0 kB\n"
                                                 "DirectMap4k:      458752 kB\n";

/// A tool that always answers this.
inline StandInPlatform::Tool answering(std::string output, std::int32_t status = 0) {
    return [result = CommandResult{status, std::move(output), ""}](const std::vector<std::string>&) { return result; };
}

/// Scripts the tool at `path` below the root.
inline void setTool(EngineHome& home, const Path& path, StandInPlatform::Tool tool) {
    home.platform.tools[home.place(path)] = std::move(tool);
}

/// What the fixture of one Linux process holds; empty parts are left out.
struct FakeProcess {
    std::int32_t pid = 0;
    std::string exe;
    std::string group;       ///< control group path
    std::string environment; ///< "NAME=value" parts, separated by "|"
    std::int32_t parent = 1;
    std::int64_t pages = 1000; ///< resident
    std::string comm;
    std::int64_t user = -1; ///< -1: the user of the tests
    std::uint64_t started = 100;
    std::int32_t terminal = 0;      ///< the controlling one, as the kernel numbers it
    std::string arguments;          ///< separated by "|"
    std::uint32_t flags = 0x400100; ///< as the kernel keeps them
};

/// The first window of a terminal (major 136, minor 0).
inline constexpr std::int32_t pseudoTerminal = 34816;

inline void addProcess(const EngineHome& home, const FakeProcess& process) {
    const Path folder = Path("/proc") / std::to_string(process.pid);
    const std::string user = std::to_string(process.user < 0 ? home.platform.user : process.user);
    home.text(folder / "statm", "9000 " + std::to_string(process.pages) + " 500 20 0 800 0\n");
    home.text(folder / "status", "Name:\t" + process.comm + "\nPid:\t" + std::to_string(process.pid) + "\nPPid:\t" +
                                     std::to_string(process.parent) + "\nUid:\t" + user + "\t" + user + "\t" + user +
                                     "\t" + user + "\n");
    home.text(folder / "stat", std::to_string(process.pid) + " (" + process.comm + ") S " +
                                   std::to_string(process.parent) + " 1 1 " + std::to_string(process.terminal) +
                                   " -1 " + std::to_string(process.flags) + " 1 2 3 4 5 6 7 8 20 0 1 0 " +
                                   std::to_string(process.started) + " 1000 200\n");
    std::string arguments = process.arguments;
    std::ranges::replace(arguments, '|', '\0');
    home.text(folder / "cmdline", arguments);
    if (!process.comm.empty()) {
        home.text(folder / "comm", process.comm + "\n");
    }
    if (!process.exe.empty()) {
        home.link(process.exe, folder / "exe");
    }
    if (!process.group.empty()) {
        home.text(folder / "cgroup", "1:name=systemd:/old\n0::" + process.group + "\n");
    }
    std::string environment = process.environment;
    std::ranges::replace(environment, '|', '\0');
    home.text(folder / "environ", environment);
}

/// The path of a unit of the test user's manager.
inline std::string userUnit(const EngineHome& home, std::string_view unit) {
    const std::string user = std::to_string(home.platform.user);
    return "/user.slice/user-" + user + ".slice/user@" + user + ".service/app.slice/" + std::string(unit);
}

} // namespace vellmoor::test
