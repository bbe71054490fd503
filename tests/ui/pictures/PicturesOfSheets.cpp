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
    report.removedBytes = 660'000'000; // with what is in the Trash it makes what was freed
    report.freedNow = 659'000'000;
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
    session.showScanned(CleanerModule::smartScan);
    bool done = session.takeAfterClick("aboutButton", "about") && session.click("about.done");
    session.driver().press(Qt::Key_F1);
    done &= session.take("shortcuts") && session.click("shortcuts.done");
    if (session.driver().item(QStringLiteral("overviewButton")) != nullptr) { // in narrow windows
        done &= session.takeAfterClick("overviewButton", "overview") && session.click("overview.close");
    }
    done &= session.takeAfterClick("keptButton", "kept-empty") && session.click("kept.done");
    session.service().setKept(
        {{.url = "/home/anna/.cache/pip", .name = "pip", .location = "~/.cache", .symbol = "folder"},
         {.url = "/home/anna/Downloads/a-very-long-installer-name-1.2.3-amd64.deb",
          .name = "a-very-long-installer-name-1.2.3-amd64.deb",
          .location = "~/Downloads",
          .symbol = "shippingbox"},
         {.url = "/home/anna/.cache/old", .name = "old", .location = "~/.cache", .symbol = "doc", .exists = false}});
    done &= session.takeAfterClick("keptButton", "kept");
    return done;
}

/// What stayed in the Trash though it was to go back.
bool takeRestore(const PictureFrame& frame) {
    PictureSession session(frame);
    session.service().setHistory(sample::history());
    session.service().onPutBack([](const CleanProgressCallback&) { return sample::restoreReport(); });
    session.driver().store().loadHistory();
    session.showScanned(CleanerModule::trash);
    bool done = session.click("history.1.putBack");
    done &=
        session.driver().waitFor([&] { return session.driver().item(QStringLiteral("restore.list")) != nullptr; }, 10);
    return done && session.take("restore");
}

/// More failures than fit, and things that were kept.
CleanupReport manyFailures() {
    CleanupReport report = sample::partlyFailedReport();
    for (int i = 0; i < 14; ++i) {
        CleanupOutcome outcome;
        outcome.path = "/home/anna/.cache/mesa_shader_cache/" + std::to_string(1000 + i * 37);
        outcome.fate = CleanupFate::Failed;
        outcome.reason = "Permission denied";
        report.outcomes.push_back(outcome);
    }
    report.attemptedCount = 40;
    report.removedCount = 24;
    report.failedCount = 14;
    report.untriedCount = 2;
    report.wasStopped = true;
    report.notes = {"thumbnails: " + L::tr("%@ 正在运行，退出浏览器后可清理 %@", "Chromium", L::tr("缓存"))};
    return report;
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
    done &= takeResult(frame, CleanerModule::systemJunk, manyFailures(), "result-many-failures");
    done &= takeRestore(frame);
    done &= takeResult(frame, memory, sample::memoryReport(), "result-memory");
    done &= takeResult(frame, memory, sample::failedMemoryReport(), "result-memory-failures");
    return done;
}

} // namespace vellmoor
