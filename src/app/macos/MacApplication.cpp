#include "MacApplication.h"

#include "LanguageManager.h"
#include "MacHost.h"
#include "MacPlatform.h"
#include "MacProgram.h"
#include "WindowKeeper.h"
#include "appkit/AppKitWorkspace.h"
#include "appkit/MacShell.h"
#include "desktop/MacDesktop.h"
#include "service/SystemCleanerService.h"

#include <QGuiApplication>
#include <QQuickStyle>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace vellmoor {
namespace {

constexpr WindowKeeper::Patience patience{.scan = std::chrono::seconds(2), .action = std::chrono::seconds(60)};
constexpr auto languageKey = "vmLanguage";

void nameApplication() {
    QGuiApplication::setApplicationName(QStringLiteral("Vellmoor"));
    QGuiApplication::setOrganizationDomain(QStringLiteral("vellmoor.org"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QQuickStyle::setStyle(QStringLiteral("Basic"));
}

/// In the program's own settings, as `defaults write org.vellmoor.Vellmoor vmLanguage` would have it.
LanguageSetting nativeSetting() {
    return {.read = [] { return mac::setting(languageKey); },
            .write = [](const std::string& rawValue) { mac::setSetting(languageKey, rawValue); }};
}

/// Everything behind the window, in the order in which it is needed; it is taken down the other way round.
struct Parts {
    MacPlatform platform;
    SystemLayout layout = macosLayout(mac::homeFolder(), platform.userId());
    AppKitWorkspace workspace;
    MacShell shell;
    MacDesktop desktop{platform, layout, workspace, shell};
    LanguageManager languages{nativeSetting(), platform.preferredLanguage()};
    WindowKeeper keeper{std::make_shared<SystemCleanerService>(platform, layout), languages, desktop,
                        frontingBy(shell)};
    MacProgram program{shell, keeper, patience.action};
};

} // namespace

int runMacApplication(int argc, char* argv[]) {
    const QGuiApplication application(argc, argv);
    nameApplication();
    L::setTextSet(TextSet::Mac);
    if (::geteuid() == 0) {
        std::fputs("vellmoor: running as root; it cleans root's own home, not that of another user\n", stderr);
    }
    Parts parts;
    if (!parts.program.start()) {
        return EXIT_FAILURE;
    }
    const int result = QGuiApplication::exec();
    // What the user confirmed was waited for while the loop still ran.
    if (!parts.keeper.shutDown({.scan = patience.scan, .action = patience.scan})) {
        // A system call that does not return keeps a worker busy; what it uses must not be taken from under it.
        std::_Exit(result);
    }
    return result;
}

} // namespace vellmoor
