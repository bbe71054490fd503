// What the window holds in memory over the real engine, in a home with many small folders in the caches: after a Smart
// Scan, with a category of that many paths unfolded, and after all of it was cleaned and scanned again.
//   memory_bench HOME [FOLDERS]      HOME is made anew: an empty or missing folder
#include "LinuxPlatform.h"
#include "RecordingDesktop.h"
#include "WindowDriver.h"
#include "layouts/SystemLayout.h"
#include "layouts/linux/LinuxEnvironment.h"
#include "paired.h"
#include "service/SystemCleanerService.h"
#include "start/SpareMemory.h"

#include <QApplication>
#include <QQuickStyle>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

using namespace vellmoor;
namespace fs = std::filesystem;

namespace {

constexpr int patience = 300; // seconds

double residentMiB() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:")) {
            return std::atof(line.c_str() + 6) / 1024;
        }
    }
    return 0;
}

void makeCaches(const fs::path& home, int folders) {
    for (int number = 0; number < folders; ++number) {
        const fs::path cache = home / ".cache" / ("cache-of-application-" + std::to_string(number));
        fs::create_directories(cache);
        std::ofstream(cache / "data") << "x";
    }
}

/// After what the program does when nothing has happened for a while.
void report(WindowDriver& driver, const char* what, const char* recorded) {
    const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(2);
    driver.waitFor([&] { return std::chrono::steady_clock::now() > until; }, 3);
    const double resident = residentMiB();
    std::printf("| %s | %.1f |\n", what, resident);
    if (recorded != nullptr) {
        record(recorded, {.median = resident});
    }
}

bool run(const fs::path& home, int folders) {
    const LinuxPlatform platform;
    const SystemLayout layout = linuxLayout(linuxEnvironmentOf(home), platform.userId());
    RecordingDesktop desktop;
    WindowDriver driver(std::make_shared<SystemCleanerService>(platform, layout), desktop, AppLanguage::english);
    const SpareMemory spare(driver.store());
    report(driver, "window", nullptr);
    driver.show(CleanerModule::smartScan);
    driver.scan();
    if (!driver.waitFor([&] { return !driver.store().isScanning(); }, patience)) {
        std::fprintf(stderr, "the scan does not end\n");
        std::_Exit(EXIT_FAILURE); // it still uses what would be taken down
    }
    report(driver, "Smart Scan", nullptr);
    const auto& items = driver.store().cleanupItems();
    const auto largest =
        std::ranges::max_element(items, {}, [](const CleanupItem& item) { return item.targets.size(); });
    if (largest == items.end() || largest->targets.size() < static_cast<std::size_t>(folders)) {
        std::fprintf(stderr, "the folders are not what the scan has found\n");
        return false;
    }
    WindowModel& model = driver.main().model();
    model.items()->toggleExpanded(static_cast<int>(largest - items.begin()));
    report(driver, "all paths of a category unfolded", "resident with 20000 paths unfolded");
    driver.show(CleanerModule::systemJunk); // Smart Scan's clean would ask for the memory, too
    model.cleanSelected();
    if (!driver.waitFor([&] { return driver.store().latestReport() && !driver.store().isScanning(); }, patience)) {
        std::fprintf(stderr, "the clean does not end\n");
        std::_Exit(EXIT_FAILURE);
    }
    const auto cleaned = driver.store().latestReport()->removedCount;
    model.closeReport();
    if (!driver.waitFor([&] { return !driver.store().history().cleans.empty(); })) {
        std::fprintf(stderr, "the clean does not come into the history\n");
        return false;
    }
    report(driver, "cleaned and scanned again", "resident after the clean of them");
    return cleaned >= folders;
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc < 2) {
        std::fprintf(stderr, "memory_bench HOME [FOLDERS]\n");
        return 2;
    }
    const int folders = argc > 2 ? std::atoi(argv[2]) : 20'000;
    const fs::path home = fs::absolute(argv[1]);
    makeCaches(home, folders);
    QApplication application(argc, argv);
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    L::setTextSet(TextSet::Linux);
    std::printf("| With %d paths, over the real engine | Resident MiB |\n|---|---:|\n", folders);
    return run(home, folders) ? 0 : 1;
}
