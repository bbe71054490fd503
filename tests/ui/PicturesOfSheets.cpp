#include "PicturesOfSheets.h"

#include "SampleData.h"

namespace vellmoor {
namespace {

bool takeDetails(const PictureFrame& frame) {
    PictureSession session(frame);
    session.showScanned(CleanerModule::smartScan);
    bool done = session.takeAfterClick("previewButton", "details");
    done &= session.click("details.done");
    session.showScanned(CleanerModule::systemJunk);
    done &= session.takeAfterClick("previewButton", "details-module");
    return done;
}

bool takeConfirmations(const PictureFrame& frame) {
    PictureSession session(frame);
    session.showScanned(CleanerModule::smartScan);
    bool done = session.takeAfterClick("cleanButton", "details-clean") &&
                session.takeAfterClick("details.clean", "confirm-clean") && session.click("confirm.cancel") &&
                session.click("details.done");
    session.driver().show(CleanerModule::memoryOptimization);
    done &= session.takeAfterClick("cleanButton", "confirm-memory") && session.click("confirm.cancel");
    done &= session.takeAfterClick("memoryApp.0.quit", "confirm-quit") && session.click("confirmQuit.cancel");
    session.driver().show(CleanerModule::performance);
    done &= session.takeAfterClick("startup.0.action", "confirm-disable") && session.click("confirmStartup.cancel");
    done &= session.takeAfterClick("startup.3.action", "confirm-restore");
    return done;
}

/// A clean that can be taken back.
bool takeSums(const PictureFrame& frame) {
    PictureSession session(frame);
    session.service().setHistory(sample::history());
    CleanupReport report = sample::cleanReport();
    report.historyId = sample::history().cleans.back().id;
    report.trashedBytes = sample::history().cleans.back().trashedBytes;
    report.removedBytes = 1'100'000'000;
    report.freedNow = 1'098'000'000;
    report.freedNowMayGrow = true;
    session.driver().store().loadHistory();
    session.showScanned(CleanerModule::smartScan);
    session.clean(report);
    bool done = session.take("result-sums");
    done &= session.takeAfterClick("result.forGood", "confirm-for-good");
    return done;
}

bool takeHelp(const PictureFrame& frame) {
    PictureSession session(frame);
    bool done = session.takeAfterClick("aboutButton", "about") && session.click("about.done");
    done &= session.takeAfterClick("keptButton", "kept-empty");
    return done;
}

bool takeResult(const PictureFrame& frame, CleanerModule module, const CleanupReport& report, const std::string& name) {
    PictureSession session(frame);
    session.showScanned(module);
    session.clean(report);
    return session.take(name);
}

} // namespace

bool takePicturesOfSheets(const PictureFrame& frame) {
    const auto memory = CleanerModule::memoryOptimization;
    bool done = takeDetails(frame);
    done &= takeConfirmations(frame);
    done &= takeSums(frame);
    done &= takeHelp(frame);
    done &= takeResult(frame, CleanerModule::smartScan, sample::cleanReport(), "result");
    done &= takeResult(frame, CleanerModule::smartScan, sample::partlyFailedReport(), "result-failures");
    done &= takeResult(frame, memory, sample::memoryReport(), "result-memory");
    done &= takeResult(frame, memory, sample::failedMemoryReport(), "result-memory-failures");
    return done;
}

} // namespace vellmoor
