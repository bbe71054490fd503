// One Smart Scan of a home folder by the real engine.
//   scan_bench HOME             scans and prints the number of rows and their bytes
//   scan_bench HOME --folders   prints the folders that the scan walks, each once, nested ones left out
//   scan_bench HOME --cancel    cancels scans at ten moments and prints the longest wait for the end, in milliseconds
#include "LinuxPlatform.h"
#include "disk/Paths.h"
#include "found/ScanSnapshot.h"
#include "layouts/linux/LinuxEnvironment.h"
#include "scan/PathMeasurement.h"
#include "service/ScanDriver.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using namespace vellmoor;
using Milliseconds = std::chrono::duration<double, std::milli>;

void useHome(const char* home) {
    ::setenv("HOME", home, 1);
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "CARGO_HOME",
                             "PIP_CACHE_DIR", "GOPATH", "CCACHE_DIR"}) {
        ::unsetenv(name);
    }
}

void printTotals(const ScanSnapshot& snapshot) {
    std::int64_t bytes = 0;
    for (const CleanupItem& item : snapshot.cleanupItems) {
        bytes += item.bytes;
    }
    std::printf("%zu rows, %lld bytes\n", snapshot.cleanupItems.size(), static_cast<long long>(bytes));
}

/// Every folder that was measured or searched for large files, without those below another.
std::vector<Path> walkedFolders(EngineContext& context) {
    std::vector<Path> folders;
    for (const auto& [folder, stats] : context.remembered<Measurements>().byPath) {
        folders.emplace_back(folder);
    }
    for (const Path& root : context.layout().largeFileRoots) {
        if (context.platform().exists(root)) {
            folders.push_back(root);
        }
    }
    std::ranges::sort(folders);
    std::vector<Path> outermost;
    for (const Path& folder : folders) {
        const bool isNested = std::ranges::any_of(
            outermost, [&](const Path& outer) { return folder == outer || isStrictlyBelow(folder, outer); });
        if (!isNested) {
            outermost.push_back(folder);
        }
    }
    return outermost;
}

double scanMilliseconds(const Platform& platform, const SystemLayout& layout) {
    EngineContext context(platform, layout, std::chrono::system_clock::now());
    const auto begin = std::chrono::steady_clock::now();
    (void)scan(context, CleanerModule::smartScan, [](const ScanProgressUpdate&) {});
    return Milliseconds(std::chrono::steady_clock::now() - begin).count();
}

double worstCancelMilliseconds(const Platform& platform, const SystemLayout& layout) {
    const double whole = scanMilliseconds(platform, layout);
    double worst = 0;
    for (int tenth = 0; tenth < 10; ++tenth) {
        CancelToken token;
        std::chrono::steady_clock::time_point cancelled;
        std::thread canceller([&] {
            std::this_thread::sleep_for(Milliseconds(whole * tenth / 10));
            cancelled = std::chrono::steady_clock::now();
            token.cancel();
        });
        EngineContext context(platform, layout, token, std::chrono::system_clock::now());
        try {
            (void)scan(context, CleanerModule::smartScan, [](const ScanProgressUpdate&) {});
        } catch (const ScanCancelled&) { // the wanted end
        }
        const auto end = std::chrono::steady_clock::now();
        canceller.join();
        worst = std::max(worst, Milliseconds(end - cancelled).count());
    }
    return worst;
}

} // namespace

int main(int count, char** arguments) {
    if (count < 2) {
        std::fprintf(stderr, "scan_bench HOME [--folders | --cancel]\n");
        return 2;
    }
    useHome(arguments[1]);
    const LinuxPlatform platform;
    const SystemLayout layout = linuxLayout(linuxEnvironmentOf(arguments[1]), ::getuid());
    if (count > 2 && std::strcmp(arguments[2], "--cancel") == 0) {
        std::printf("%.1f\n", worstCancelMilliseconds(platform, layout));
        return 0;
    }
    EngineContext context(platform, layout, std::chrono::system_clock::now());
    const ScanSnapshot snapshot = scan(context, CleanerModule::smartScan, [](const ScanProgressUpdate&) {});
    if (count > 2) {
        for (const Path& folder : walkedFolders(context)) {
            std::printf("%s\n", folder.c_str());
        }
        return 0;
    }
    printTotals(snapshot);
    return 0;
}
