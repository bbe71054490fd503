#include "PicturesOfPages.h"

#include "SampleData.h"

namespace vellmoor {
namespace {

constexpr std::int64_t megabyte = 1'000'000;

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

/// Half-way, and what is asked when the window is closed then.
bool takeCleaning(const PictureFrame& frame, CleanerModule module) {
    PictureSession session(frame);
    auto gate = std::make_shared<Gate>();
    session.service().setCleanProgress({.doneCount = 412,
                                        .totalCount = 1204,
                                        .doneBytes = 3'120 * megabyte,
                                        .totalBytes = 8'400 * megabyte,
                                        .current = "/home/anna/.cache/mesa_shader_cache/3f/0b7c1d2e9a"});
    session.service().onClean([gate](const std::vector<CleanupItem>&) {
        gate->pass();
        return sample::cleanReport();
    });
    session.showScanned(module);
    session.model().setAllSelected(true);
    session.driver().settle();
    session.model().cleanSelected();
    session.driver().waitFor([&] {
        const auto& progress = session.driver().store().cleanProgress();
        return progress && progress->doneCount > 0;
    });
    bool done = session.driver().store().isCleaning() && session.take(nameOf(module) + "-cleaning");
    if (module == CleanerModule::smartScan) {
        done &= !session.model().mayClose() && session.take("confirm-close");
    }
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

/// A clean that was cut off, a whole one, and one of which a part is back in its place.
bool takeHistory(const PictureFrame& frame) {
    PictureSession session(frame);
    History history = sample::history();
    HistoryClean partly = history.cleans.back();
    partly.id = "three";
    partly.at -= std::chrono::hours(30);
    partly.module = CleanerModule::largeFiles;
    partly.items = {};
    for (HistoryItem item : history.cleans.back().items.all()) {
        item.isPutBack = partly.items.empty();
        item.place = item.isPutBack ? "" : item.place;
        partly.items.push_back(item);
    }
    partly.trashedCount = 2;
    partly.trashedBytes = 100 * megabyte;
    history.cleans.push_back(partly);
    session.service().setHistory(history);
    session.driver().store().loadHistory();
    session.showScanned(CleanerModule::trash);
    session.driver().waitFor([&] { return !session.driver().store().history().cleans.empty(); });
    bool done = session.take("trash-history") && session.takeAfterClick("history.2.expand", "trash-history-partly");
    done &= session.click("history.2.expand") && session.takeAfterClick("history.0.finish", "confirm-finish");
    done &= session.click("decide.cancel") && session.takeAfterClick("forgetHistory", "confirm-forget");
    return done;
}

/// More large files than are listed at first, and all of them.
bool takeManyFiles(const PictureFrame& frame) {
    PictureSession session(frame);
    session.service().onScan([](CleanerModule module, const ProgressCallback&, const CancelToken&) {
        ScanSnapshot scan = sample::snapshot(module);
        for (int copy = 1; copy < 8; ++copy) {
            for (CleanupItem item : sample::snapshot(CleanerModule::largeFiles).cleanupItems) {
                item.targets.edit().front().url = item.targets.front().url.native() + "." + std::to_string(copy);
                item.targets.edit().front().name += "." + std::to_string(copy);
                item.title += "." + std::to_string(copy);
                scan.furtherLargeFiles.push_back(item);
            }
        }
        return scan;
    });
    session.showScanned(CleanerModule::largeFiles);
    bool done = session.take("largeFiles-more") && session.takeAfterClick("listAll", "largeFiles-all");
    done &= session.takeAfterClick("kindFilter", "largeFiles-kinds");
    return done;
}

/// What opens over a list, and what a search and a filter leave of it.
bool takeListTools(const PictureFrame& frame) {
    PictureSession session(frame);
    session.showScanned(CleanerModule::systemJunk);
    bool done = session.takeAfterClick("sortButton", "systemJunk-sort");
    session.driver().press(Qt::Key_Escape);
    done &= session.driver().click("item.1", Qt::RightButton) && session.take("systemJunk-menu");
    session.driver().press(Qt::Key_Escape);
    done &= session.takeAfterClick("filter.recommended", "systemJunk-recommended") && session.click("searchButton");
    session.driver().press(Qt::Key_N);
    done &= session.take("systemJunk-search");
    session.driver().press(Qt::Key_Q);
    return done && session.take("systemJunk-search-empty");
}

bool takeNotices(const PictureFrame& frame) {
    PictureSession session(frame, true);
    session.showScanned(CleanerModule::smartScan);
    session.model().showNotice(QString::fromStdString(L::tr("文件管理器没有打开。")), true);
    bool done = session.take("smartScan-notices");
    session.driver().show(CleanerModule::memoryOptimization);
    session.model().showNotice(
        QString::fromStdString(L::tr("%@ 未响应退出请求，可在活动监视器中结束。", std::string("Thunderbird"))), true);
    done &= session.take("memoryOptimization-notice");
    return done;
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
    done &= takeManyFiles(frame);
    done &= takeListTools(frame);
    done &= takeNotices(frame);
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
