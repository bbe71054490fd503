// Scrolls the window's lists with ten thousand rows each and prints one Markdown table of what their frames cost: the
// time that the main thread needs to move the list, make and place the rows that came into view, and draw them.
#include "RecordingDesktop.h"
#include "SampleData.h"
#include "ScriptedCleanerService.h"
#include "WindowDriver.h"
#include "found/ScanSnapshot.h"

#include <QEvent>
#include <QGuiApplication>
#include <QQuickStyle>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace vellmoor;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int rowCount = 10'000;
constexpr int framesEach = 600;
// A hard flick: at 60 frames a second some four thousand pixels a second.
constexpr double pixelsAFrame = 70;

double millisecondsSince(Clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

/// How long the window works on a frame: from the request that reaches it to the frame that is on the screen.
class FrameWatch : public QObject {
public:
    explicit FrameWatch(QQuickWindow& window) {
        window.installEventFilter(this);
        connect(&window, &QQuickWindow::frameSwapped, this, [this] {
            milliseconds_ = millisecondsSince(begin_);
            ++frames_;
        });
    }
    [[nodiscard]] int frames() const { return frames_; }
    [[nodiscard]] double milliseconds() const { return milliseconds_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::UpdateRequest) {
            begin_ = Clock::now();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    Clock::time_point begin_ = Clock::now();
    double milliseconds_ = 0;
    int frames_ = 0;
};

std::vector<double> scrolled(WindowDriver& driver, QQuickItem& list) {
    FrameWatch watch(driver.main().window());
    std::vector<double> costs;
    double y = list.property("originY").toDouble();
    for (int i = 0; i < framesEach; ++i) {
        y += pixelsAFrame;
        const int before = watch.frames();
        const auto begin = Clock::now();
        list.setProperty("contentY", y);
        const double moving = millisecondsSince(begin);
        if (!driver.waitFor([&] { return watch.frames() > before; }, 5)) {
            return {};
        }
        costs.push_back(moving + watch.milliseconds());
    }
    std::ranges::sort(costs);
    return costs;
}

struct Case {
    std::string name;
    CleanerModule module;
    std::vector<CleanupItem> items;
    bool unfolds = false;
};

std::vector<CleanupItem> repeated(CleanerModule module) {
    const std::vector<CleanupItem> few = sample::snapshot(module).cleanupItems;
    std::vector<CleanupItem> many;
    for (int i = 0; i < rowCount; ++i) {
        CleanupItem item = few[static_cast<std::size_t>(i) % few.size()];
        item.title += " " + std::to_string(i);
        item.id = CleanupItem().id;
        many.push_back(std::move(item));
    }
    return many;
}

std::vector<Case> cases() {
    const auto junk = CleanerModule::systemJunk;
    return {{"categories", junk, repeated(junk)},
            {"paths of one category", junk, {sample::category(junk, "Junk", CleanupRisk::safe, rowCount)}, true},
            {"large files", CleanerModule::largeFiles, repeated(CleanerModule::largeFiles)},
            {"applications", CleanerModule::appUninstaller, repeated(CleanerModule::appUninstaller)}};
}

bool run(const Case& given) {
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
    QQuickItem* list = driver.item(QStringLiteral("cleanupList"));
    const std::vector<double> costs = list == nullptr ? std::vector<double>() : scrolled(driver, *list);
    if (costs.empty()) {
        std::fprintf(stderr, "the list of %s did not scroll\n", given.name.c_str());
        return false;
    }
    const auto at = [&](double part) { return costs[static_cast<std::size_t>(part * (framesEach - 1))]; };
    const auto late = costs.end() - std::ranges::upper_bound(costs, 16.0);
    std::printf("| %d %s | %.1f | %.1f | %.1f | %td |\n", rowCount, given.name.c_str(), at(0.5), at(0.99), costs.back(),
                late);
    return true;
}

} // namespace

int main(int argc, char* argv[]) {
    QGuiApplication application(argc, argv);
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    L::setTextSet(TextSet::Linux);
    std::printf(
        "| Scrolling | Median ms a frame | 99 %% below | Worst | Over 16 ms, of %d |\n|---|---:|---:|---:|---:|\n",
        framesEach);
    const std::vector<Case> all = cases();
    return std::ranges::all_of(all, run) ? 0 : 1;
}
