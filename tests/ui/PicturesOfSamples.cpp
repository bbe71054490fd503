#include "PicturesOfSamples.h"

#include "RecordingDesktop.h"
#include "SampleData.h"
#include "ScriptedCleanerService.h"
#include "WindowDriver.h"

namespace vellmoor {
namespace {

/// One picture: a fresh window, what is done in it, and the file's name.
class Session {
public:
    Session(const std::filesystem::path& folder, AppLanguage language)
        : folder_(folder),
          service_(std::make_shared<ScriptedCleanerService>()),
          driver_(service_, desktop_, language),
          language_(language) {
        service_->onScan(
            [](CleanerModule module, const ProgressCallback&, const CancelToken&) { return sample::snapshot(module); });
        service_->setHints(sample::grantedHints());
    }

    [[nodiscard]] ScriptedCleanerService& service() { return *service_; }
    [[nodiscard]] WindowDriver& driver() { return driver_; }

    bool take(const std::string& name) {
        return driver_.take(folder_ / (name + "-" + std::string(rawValue(language_)) + ".png"));
    }

    /// Cleans what is selected, with `report` as the outcome.
    void clean(const CleanupReport& report) {
        service_->onClean([report](const std::vector<CleanupItem>&) { return report; });
        driver_.main().model().cleanSelected();
        driver_.waitFor([this] { return !driver_.store().isCleaning() && !driver_.store().isScanning(); });
    }

private:
    std::filesystem::path folder_;
    RecordingDesktop desktop_;
    std::shared_ptr<ScriptedCleanerService> service_;
    WindowDriver driver_;
    AppLanguage language_;
};

bool takePages(const std::filesystem::path& folder, AppLanguage language) {
    bool done = true;
    Session session(folder, language);
    if (!session.driver().isReady()) {
        return false;
    }
    session.driver().main().model().activated();
    done &= session.take("never-scanned");
    session.driver().show(CleanerModule::systemJunk);
    done &= session.take("never-scanned-module");
    session.driver().show(CleanerModule::smartScan);
    session.driver().scan();
    for (const CleanerModule module : allCleanerModules) {
        session.driver().show(module);
        done &= session.take(std::string(rawValue(module)));
    }
    return done;
}

bool takeScanning(const std::filesystem::path& folder, AppLanguage language) {
    Session session(folder, language);
    auto gate = std::make_shared<Gate>();
    session.service().onScan([gate](CleanerModule module, const ProgressCallback& progress, const CancelToken&) {
        progress({L::tr("正在查找大文件..."), 0.42});
        gate->pass();
        return sample::snapshot(module);
    });
    session.driver().main().model().refresh();
    session.driver().waitFor([&] { return session.driver().store().scanProgress() > 0.4; });
    bool done = session.take("scanning");
    gate->open();
    session.driver().waitFor([&] { return !session.driver().store().isScanning(); });
    return done;
}

bool takeUnfolded(const std::filesystem::path& folder, AppLanguage language) {
    Session session(folder, language);
    session.driver().show(CleanerModule::systemJunk);
    session.driver().scan();
    bool done = session.driver().click(QStringLiteral("item.0.expand"));
    done &= session.driver().click(QStringLiteral("item.0.target.1.toggle"));
    done &= session.take("unfolded");
    session.driver().show(CleanerModule::appUninstaller);
    session.driver().scan();
    done &= session.driver().click(QStringLiteral("item.0.expand"));
    done &= session.take("unfolded-app");
    return done;
}

bool takeLimited(const std::filesystem::path& folder, AppLanguage language) {
    Session session(folder, language);
    session.service().setHints(sample::limitedHints());
    session.service().onScan([](CleanerModule module, const ProgressCallback&, const CancelToken&) {
        ScanSnapshot scan = sample::snapshot(module);
        scan.permissionHints = sample::limitedHints();
        return scan;
    });
    session.driver().scan();
    bool done = session.take("limited");
    session.driver().show(CleanerModule::privacy);
    done &= session.take("limited-privacy");
    return done;
}

bool takeSheets(const std::filesystem::path& folder, AppLanguage language) {
    Session session(folder, language);
    WindowDriver& driver = session.driver();
    driver.scan();
    bool done = driver.click(QStringLiteral("previewButton")) && session.take("details");
    done &= driver.click(QStringLiteral("details.done"));
    session.take("details-closed");
    done &= driver.click(QStringLiteral("cleanButton")) && session.take("confirm-clean");
    done &= driver.click(QStringLiteral("confirm.cancel"));
    session.clean(sample::cleanReport());
    done &= session.take("result");
    driver.store().clearReport();
    session.clean(sample::partlyFailedReport());
    done &= session.take("result-failures");
    driver.store().clearReport();
    driver.show(CleanerModule::memoryOptimization);
    done &= driver.click(QStringLiteral("cleanButton")) && session.take("confirm-memory");
    done &= driver.click(QStringLiteral("confirm.cancel"));
    done &= driver.click(QStringLiteral("memoryApp.0.quit")) && session.take("confirm-quit");
    done &= driver.click(QStringLiteral("confirmQuit.cancel"));
    session.clean(sample::memoryReport());
    done &= session.take("result-memory");
    driver.store().clearReport();
    driver.show(CleanerModule::performance);
    done &= driver.click(QStringLiteral("startup.0.action")) && session.take("confirm-disable");
    done &= driver.click(QStringLiteral("confirmStartup.cancel"));
    done &= driver.click(QStringLiteral("startup.3.action")) && session.take("confirm-restore");
    return done;
}

} // namespace

bool takePicturesOfSamples(const std::filesystem::path& folder) {
    L::setTextSet(TextSet::Linux);
    bool done = true;
    for (const AppLanguage language : allAppLanguages) {
        done &= takePages(folder, language);
        done &= takeScanning(folder, language);
        done &= takeUnfolded(folder, language);
        done &= takeLimited(folder, language);
        done &= takeSheets(folder, language);
    }
    return done;
}

} // namespace vellmoor
