// What the window's main thread works for one act on long lists, in processor time, and prints one Markdown table: the
// act itself with all that follows at once, and until a frame shows it. Each act is taken back in turn; only one
// direction counts, as the two may cost differently.
//   list_bench [ROUNDS]
#include "RecordingDesktop.h"
#include "SampleData.h"
#include "ScriptedCleanerService.h"
#include "WindowDriver.h"
#include "found/ScanSnapshot.h"
#include "paired.h"

#include <QGuiApplication>
#include <QQuickStyle>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace vellmoor;

namespace {

/// Processor time of the calling thread so far.
double workedMilliseconds() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

struct Case {
    std::string name;
    CleanerModule module;
    std::vector<CleanupItem> items;
    /// Does it, or takes it back.
    std::function<void(WindowModel& model, bool forth)> act;
    bool unfolds = false;
    bool countsForth = true; ///< or taking it back
};

CleanupItem withName(CleanupItem item, const std::string& name) {
    item.id = CleanupItem().id;
    item.title = name;
    for (CleanupTarget& target : item.targets.edit()) {
        target.url = "/home/ann/" + name;
        target.name = name;
    }
    return item;
}

std::vector<CleanupItem> repeated(CleanerModule module, int count) {
    const std::vector<CleanupItem> few = sample::snapshot(module).cleanupItems;
    std::vector<CleanupItem> many;
    for (int number = 0; number < count; ++number) {
        many.push_back(withName(few[static_cast<std::size_t>(number) % few.size()], "row " + std::to_string(number)));
    }
    return many;
}

std::vector<Case> cases() {
    const auto tick = [](WindowModel& model, bool) { model.items()->toggle(0); };
    const auto selectFiles = [](WindowModel& model, bool forth) { model.largeFiles()->setAllSelected(forth); };
    const auto change = [](WindowModel& model, bool forth) {
        model.setModule(forth ? QStringLiteral("privacy") : QStringLiteral("smartScan"));
    };
    const auto junk = CleanerModule::systemJunk;
    return {
        {"untick a category of 50000 paths", junk, {sample::category(junk, "Junk", CleanupRisk::safe, 50'000)}, tick},
        {"the same, unfolded", junk, {sample::category(junk, "Junk", CleanupRisk::safe, 50'000)}, tick, true},
        {"select all of 10000 large files", CleanerModule::largeFiles, repeated(CleanerModule::largeFiles, 10'000),
         selectFiles},
        {"change to a Smart Scan of 50000 rows", CleanerModule::smartScan, repeated(junk, 50'000), change, false,
         false}};
}

/// The act alone, and with all until it is on the screen.
std::pair<double, double> worked(WindowDriver& driver, const std::function<void()>& act) {
    driver.settle();
    int frames = 0;
    const QObject scope;
    QObject::connect(&driver.main().window(), &QQuickWindow::frameSwapped, &scope, [&frames] { ++frames; });
    const double begin = workedMilliseconds();
    act();
    const double done = workedMilliseconds();
    driver.waitFor([&] { return frames > 0; }, 5);
    return {done - begin, workedMilliseconds() - begin};
}

bool run(const Case& given, int rounds) {
    auto service = std::make_shared<ScriptedCleanerService>();
    service->onScan([&given](CleanerModule, const ProgressCallback&, const CancelToken&) {
        ScanSnapshot scan = sample::snapshot(CleanerModule::systemJunk);
        scan.cleanupItems = given.items;
        return scan;
    });
    RecordingDesktop desktop;
    WindowDriver driver(service, desktop, AppLanguage::english);
    driver.show(given.module);
    driver.scan();
    if (given.unfolds && !driver.click(QStringLiteral("item.0.expand"))) {
        return false;
    }
    std::vector<double> acts;
    std::vector<double> frames;
    for (int round = -1; round < 2 * rounds; ++round) {
        const auto [act, frame] = worked(driver, [&] { given.act(driver.main().model(), round % 2 != 0); });
        const bool isForth = round % 2 != 0;
        if (round >= 0 && isForth == given.countsForth) { // the first one loads what comes into view
            acts.push_back(act);
            frames.push_back(frame);
        }
    }
    const Figure act = figureOf(acts);
    const Figure frame = figureOf(frames);
    std::printf("| %s | %s | %s |\n", given.name.c_str(), act.text().c_str(), frame.text().c_str());
    record(given.name + " at once", act);
    record(given.name, frame);
    return true;
}

} // namespace

int main(int argc, char* argv[]) {
    QGuiApplication application(argc, argv);
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    L::setTextSet(TextSet::Linux);
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 11;
    std::printf("| Work of the main thread, ms | At once | Until a frame shows it |\n|---|---:|---:|\n");
    for (const Case& one : cases()) {
        if (!run(one, rounds)) {
            std::fprintf(stderr, "%s failed\n", one.name.c_str());
            return 1;
        }
    }
    return 0;
}
