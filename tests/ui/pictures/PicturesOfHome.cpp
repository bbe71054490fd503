#include "PicturesOfHome.h"

#include "Host.h"
#include "RecordingDesktop.h"
#include "WindowDriver.h"
#include "layouts/SystemLayout.h"
#include "service/SystemCleanerService.h"

#include <QByteArray>

namespace vellmoor {
namespace {

/// The home is the one of the whole process; no XDG variable counts.
void moveInto(const std::filesystem::path& home) {
    qputenv("HOME", QByteArray::fromStdString(home.string()));
    for (const auto* variable : {"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"}) {
        qunsetenv(variable);
    }
}

bool takePages(const std::shared_ptr<CleanerService>& service, const SystemLayout& layout,
               const std::filesystem::path& folder, AppLanguage language) {
    RecordingDesktop desktop;
    desktop.label = layout.volumeLabel;
    desktop.home = layout.home;
    WindowDriver driver(service, desktop, language);
    if (!driver.isReady()) {
        return false;
    }
    driver.scan();
    bool done = true;
    for (const CleanerModule module : allCleanerModules) {
        driver.show(module);
        done &= driver.take(folder / (std::string(rawValue(module)) + "-" + std::string(rawValue(language)) + ".png"));
    }
    driver.show(CleanerModule::smartScan);
    done &= driver.click(QStringLiteral("previewButton"));
    done &= driver.take(folder / ("details-" + std::string(rawValue(language)) + ".png"));
    return done;
}

} // namespace

bool takePicturesOfHome(const std::filesystem::path& home, const std::filesystem::path& folder) {
    const std::filesystem::path real = std::filesystem::canonical(home);
    moveInto(real);
    const SystemLayout layout = test::hostLayout(real);
    L::setTextSet(layout.texts);
    const auto service = std::make_shared<SystemCleanerService>(test::hostPlatform(), layout);
    bool done = true;
    for (const AppLanguage language : allAppLanguages) {
        done &= takePages(service, layout, folder, language);
    }
    return done;
}

} // namespace vellmoor
