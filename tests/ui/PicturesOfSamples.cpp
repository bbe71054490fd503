#include "PicturesOfSamples.h"

#include "Photographer.h"
#include "RecordingDesktop.h"
#include "SampleData.h"
#include "ScriptedCleanerService.h"

namespace vellmoor {
namespace {

/// One picture: a fresh window, what is done in it, and the file's name.
class Session {
public:
    Session(const std::filesystem::path& folder, AppLanguage language)
        : folder_(folder),
          service_(std::make_shared<ScriptedCleanerService>()),
          photographer_(service_, desktop_, language),
          language_(language) {
        service_->onScan(
            [](CleanerModule module, const ProgressCallback&, const CancelToken&) { return sample::snapshot(module); });
        service_->setHints(sample::grantedHints());
    }

    [[nodiscard]] ScriptedCleanerService& service() { return *service_; }
    [[nodiscard]] Photographer& photographer() { return photographer_; }

    bool take(const std::string& name) {
        return photographer_.take(folder_ / (name + "-" + std::string(rawValue(language_)) + ".png"));
    }

    /// Cleans what is selected, with `report` as the outcome.
    void clean(const CleanupReport& report) {
        service_->onClean([report](const std::vector<CleanupItem>&) { return report; });
        photographer_.main().model().cleanSelected();
        photographer_.waitFor(
            [this] { return !photographer_.store().isCleaning() && !photographer_.store().isScanning(); });
    }

private:
    std::filesystem::path folder_;
    RecordingDesktop desktop_;
    std::shared_ptr<ScriptedCleanerService> service_;
    Photographer photographer_;
    AppLanguage language_;
};

bool takePages(const std::filesystem::path& folder, AppLanguage language) {
    bool done = true;
    Session session(folder, language);
    if (!session.photographer().isReady()) {
        return false;
    }
    session.photographer().main().model().activated();
    done &= session.take("never-scanned");
    session.photographer().show(CleanerModule::systemJunk);
    done &= session.take("never-scanned-module");
    session.photographer().show(CleanerModule::smartScan);
    session.photographer().scan();
    for (const CleanerModule module : allCleanerModules) {
        session.photographer().show(module);
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
    session.photographer().main().model().refresh();
    session.photographer().waitFor([&] { return session.photographer().store().scanProgress() > 0.4; });
    bool done = session.take("scanning");
    gate->open();
    session.photographer().waitFor([&] { return !session.photographer().store().isScanning(); });
    return done;
}

bool takeUnfolded(const std::filesystem::path& folder, AppLanguage language) {
    Session session(folder, language);
    session.photographer().show(CleanerModule::systemJunk);
    session.photographer().scan();
    bool done = session.photographer().click(QStringLiteral("item.0.expand"));
    done &= session.photographer().click(QStringLiteral("item.0.target.1.toggle"));
    done &= session.take("unfolded");
    session.photographer().show(CleanerModule::appUninstaller);
    session.photographer().scan();
    done &= session.photographer().click(QStringLiteral("item.0.expand"));
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
    session.photographer().scan();
    bool done = session.take("limited");
    session.photographer().show(CleanerModule::privacy);
    done &= session.take("limited-privacy");
    return done;
}

bool takeSheets(const std::filesystem::path& folder, AppLanguage language) {
    Session session(folder, language);
    Photographer& photographer = session.photographer();
    photographer.scan();
    bool done = photographer.click(QStringLiteral("previewButton")) && session.take("details");
    done &= photographer.click(QStringLiteral("details.done"));
    session.take("details-closed");
    done &= photographer.click(QStringLiteral("cleanButton")) && session.take("confirm-clean");
    done &= photographer.click(QStringLiteral("confirm.cancel"));
    session.clean(sample::cleanReport());
    done &= session.take("result");
    photographer.store().clearReport();
    session.clean(sample::partlyFailedReport());
    done &= session.take("result-failures");
    photographer.store().clearReport();
    photographer.show(CleanerModule::memoryOptimization);
    done &= photographer.click(QStringLiteral("cleanButton")) && session.take("confirm-memory");
    done &= photographer.click(QStringLiteral("confirm.cancel"));
    done &= photographer.click(QStringLiteral("memoryApp.0.quit")) && session.take("confirm-quit");
    done &= photographer.click(QStringLiteral("confirmQuit.cancel"));
    session.clean(sample::memoryReport());
    done &= session.take("result-memory");
    photographer.store().clearReport();
    photographer.show(CleanerModule::performance);
    done &= photographer.click(QStringLiteral("startup.0.action")) && session.take("confirm-disable");
    done &= photographer.click(QStringLiteral("confirmStartup.cancel"));
    done &= photographer.click(QStringLiteral("startup.3.action")) && session.take("confirm-restore");
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
