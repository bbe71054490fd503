#include "PicturesOfPages.h"

#include "SampleData.h"

namespace vellmoor {
namespace {

std::string nameOf(CleanerModule module) {
    return std::string(rawValue(module));
}

bool takeBeforeScan(const PictureFrame& frame) {
    PictureSession session(frame);
    bool done = true;
    for (const CleanerModule module : allCleanerModules) {
        session.driver().show(module);
        done &= session.take(nameOf(module) + "-before");
    }
    return done;
}

bool takeResults(const PictureFrame& frame) {
    PictureSession session(frame);
    session.showScanned(CleanerModule::smartScan);
    bool done = true;
    for (const CleanerModule module : allCleanerModules) {
        session.driver().show(module);
        done &= session.take(nameOf(module));
    }
    return done;
}

bool takeScanning(const PictureFrame& frame, CleanerModule module) {
    PictureSession session(frame);
    auto gate = std::make_shared<Gate>();
    session.service().onScan([gate](CleanerModule scanned, const ProgressCallback& progress, const CancelToken&) {
        progress({L::tr("正在查找大文件..."), 0.42});
        gate->pass();
        return sample::snapshot(scanned);
    });
    session.driver().show(module);
    session.driver().main().model().refresh();
    session.driver().waitFor([&] { return session.driver().store().scanProgress() > 0.4; });
    const bool done = session.take(nameOf(module) + "-scanning");
    gate->open();
    session.waitUntilIdle();
    return done;
}

bool takeEmpty(const PictureFrame& frame, CleanerModule module) {
    PictureSession session(frame);
    session.service().onScan([](CleanerModule scanned, const ProgressCallback&, const CancelToken&) {
        ScanSnapshot scan = sample::snapshot(scanned);
        scan.cleanupItems.clear();
        scan.fileCandidates.clear();
        scan.startupItems.clear();
        scan.memoryApps.clear();
        return scan;
    });
    session.showScanned(module);
    return session.take(nameOf(module) + "-empty");
}

bool takeCleaning(const PictureFrame& frame, CleanerModule module) {
    PictureSession session(frame);
    auto gate = std::make_shared<Gate>();
    session.service().onClean([gate](const std::vector<CleanupItem>&) {
        gate->pass();
        return sample::cleanReport();
    });
    session.showScanned(module);
    session.driver().main().model().setAllSelected(true);
    session.driver().settle();
    session.driver().main().model().cleanSelected();
    const bool done = session.driver().store().isCleaning() && session.take(nameOf(module) + "-cleaning");
    gate->open();
    session.waitUntilIdle();
    return done;
}

bool takeFailedChange(const PictureFrame& frame) {
    PictureSession session(frame);
    session.service().onDisable([](const StartupItem& item) {
        return StartupActionResult{false, L::tr("禁用 %@ 失败：%@", item.name, "Permission denied")};
    });
    session.showScanned(CleanerModule::performance);
    if (!session.click("startup.1.action") || !session.click("confirmStartup.accept")) {
        return false;
    }
    session.waitUntilIdle();
    return session.take("performance-failed");
}

bool takeLimited(const PictureFrame& frame) {
    PictureSession session(frame);
    session.service().setHints(sample::limitedHints());
    session.service().onScan([](CleanerModule module, const ProgressCallback&, const CancelToken&) {
        ScanSnapshot scan = sample::snapshot(module);
        scan.permissionHints = sample::limitedHints();
        return scan;
    });
    session.showScanned(CleanerModule::smartScan);
    bool done = session.take("smartScan-limited");
    session.driver().show(CleanerModule::privacy);
    done &= session.take("privacy-limited");
    return done;
}

bool takeHistory(const PictureFrame& frame) {
    PictureSession session(frame);
    session.service().setHistory(sample::history());
    session.driver().store().loadHistory();
    session.showScanned(CleanerModule::trash);
    session.driver().waitFor([&] { return !session.driver().store().history().cleans.empty(); });
    return session.takeAfterClick("history.1.expand", "trash-history");
}

bool takeUnfolded(const PictureFrame& frame) {
    PictureSession session(frame);
    session.showScanned(CleanerModule::systemJunk);
    bool done =
        session.click("item.0.expand") && session.takeAfterClick("item.0.target.1.toggle", "systemJunk-unfolded");
    session.showScanned(CleanerModule::appUninstaller);
    done &= session.takeAfterClick("item.0.expand", "appUninstaller-unfolded");
    return done;
}

} // namespace

bool takePicturesOfResults(const PictureFrame& frame) {
    return takeResults(frame);
}

bool takePicturesOfPages(const PictureFrame& frame) {
    bool done = takeBeforeScan(frame);
    done &= takeResults(frame);
    for (const CleanerModule module : allCleanerModules) {
        done &= takeScanning(frame, module);
        done &= takeEmpty(frame, module);
        if (module != CleanerModule::performance) { // its items are switched, not cleaned
            done &= takeCleaning(frame, module);
        }
    }
    done &= takeFailedChange(frame);
    done &= takeLimited(frame);
    done &= takeUnfolded(frame);
    done &= takeHistory(frame);
    return done;
}

bool takePicturesOfExtremes(const PictureFrame& frame) {
    PictureSession session(frame);
    session.service().onScan(
        [](CleanerModule module, const ProgressCallback&, const CancelToken&) { return sample::extremes(module); });
    bool done = true;
    for (const CleanerModule module : allCleanerModules) {
        session.showScanned(module);
        done &= session.take(nameOf(module) + "-extremes");
    }
    session.showScanned(CleanerModule::systemJunk);
    done &= session.takeAfterClick("previewButton", "details-extremes");
    return done;
}

} // namespace vellmoor
