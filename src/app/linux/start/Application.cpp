#include "start/Application.h"

#include "CleanerStore.h"
#include "LanguageManager.h"
#include "LinuxPlatform.h"
#include "MainWindow.h"
#include "desktop/LinuxDesktop.h"
#include "look/LookWatcher.h"
#include "service/SystemCleanerService.h"
#include "start/Renderer.h"
#include "start/SingleInstance.h"
#include "start/SpareMemory.h"
#include "start/StartOptions.h"
#include "start/TerminationSignals.h"
#include "start/Wishes.h"
#include "tray/StatusBarController.h"

#include <QApplication>
#include <QFontDatabase>
#include <QIcon>
#include <QQmlEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <pwd.h>
#include <span>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace vellmoor {
namespace {

/// A cancelled scan ends at once; a clean or a moved login item, which the user confirmed, is brought to its end.
constexpr std::chrono::seconds scanPatience{2};
constexpr std::chrono::seconds actionPatience{60};
constexpr std::chrono::milliseconds shortPatience{100};

/// A window that starts out of sight gets no frame.
constexpr std::chrono::milliseconds framePatience{250};

/// Started by the bus, it is told within moments what for.
constexpr std::chrono::seconds servicePatience{20};

constexpr int usageStatus = 2;

void nameApplication() {
    QApplication::setApplicationName(QStringLiteral("Vellmoor"));
    QApplication::setApplicationVersion(QStringLiteral(VELLMOOR_VERSION));
    QApplication::setOrganizationName(QStringLiteral("Vellmoor"));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.vellmoor.Vellmoor"));
    QApplication::setQuitOnLastWindowClosed(false);
    QIcon::setFallbackThemeName(QStringLiteral("hicolor"));
    QQuickStyle::setStyle(QStringLiteral("Basic"));
}

/// Qt combines the two as flags, though its enumeration names no such value.
// NOLINTNEXTLINE(clang-analyzer-optin.core.EnumCastOutOfRange)
constexpr auto onceLater = static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection);

/// Reading icon themes takes a while; the page does not wait for it.
void setIconLater(QQuickWindow& window) {
    QObject::connect(
        &window, &QQuickWindow::frameSwapped, qApp,
        [] { QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("org.vellmoor.Vellmoor"))); }, onceLater);
}

/// The system's fonts are found on another thread while the window comes up; the first text would wait for them.
std::jthread findFontsAhead() {
    try {
        return std::jthread([] { (void)QFontDatabase::families(); });
    } catch (const std::system_error&) { // no thread to be had: the first text finds them
        return {};
    }
}

/// Everything behind the views, in the order in which it is needed; it is taken down the other way round.
struct Parts {
    Parts(const LookWatcher& watcher, const std::filesystem::path& root)
        : looks(watcher),
          layout(linuxLayout(environment, platform.userId(), root)) {}

    const LookWatcher& looks;
    LinuxEnvironment environment = processEnvironment();
    LinuxPlatform platform;
    SystemLayout layout;
    LinuxDesktop desktop{platform, layout, environment, looks};
    LanguageManager languages{LanguageSetting::userDefaults(), platform.preferredLanguage()};
    CleanerStore store{std::make_shared<SystemCleanerService>(platform, layout),
                       [] { return std::chrono::system_clock::now(); }};
    SpareMemory spare{store};
};

std::filesystem::path accountHome() {
    const struct passwd* account = ::getpwuid(::getuid());
    return account == nullptr ? std::filesystem::path() : std::filesystem::path(account->pw_dir);
}

/// Everything else comes when the window is on the screen.
void fillWindow(MainWindow& main, QQmlEngine& engine, Parts& parts, Wishes& wishes) {
    QObject::connect(&engine, &QQmlEngine::quit, qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    main.fill(engine, parts.store, parts.languages, parts.desktop, QQmlComponent::Asynchronous,
              [&main, &parts, &wishes](const MainWindow::Outcome& filled) {
                  setIconLater(main.window());
                  if (filled) {
                      wishes.ready(parts.store, main.model());
                  } else {
                      std::fprintf(stderr, "vellmoor: %s\n", filled.error().c_str());
                      QCoreApplication::exit(EXIT_FAILURE);
                  }
              });
}

/// The store whose work must not be cut off in the middle of a path, while there is one.
CleanerStore* workingStore = nullptr;

/// The user quits: a clean that he confirmed is brought to its end. When that takes too long, or the session ends
/// meanwhile, only the path at hand is. Whether nothing runs any more.
bool finishWork(CleanerStore& store) {
    const bool isActing = store.isCleaning();
    const auto start = std::chrono::steady_clock::now();
    const auto waited = [start] { return std::chrono::steady_clock::now() - start; };
    while (waited() < (isActing ? 2 * actionPatience : scanPatience)) {
        if (store.shutDown(shortPatience)) {
            return true;
        }
        if (waited() >= actionPatience || TerminationSignals::wereSent()) {
            store.stopCleaning();
        }
    }
    return false;
}

/// The session ends: nobody waits for a long clean, and the path at hand is not left half done.
void stopWork() {
    if (workingStore != nullptr) {
        workingStore->stopCleaning();
    }
}

/// Qt calls exit() in the middle of its event loop when the display goes away.
void finishPathAtExit() {
    if (workingStore != nullptr) {
        stopWork();
        workingStore->shutDown(actionPatience);
    }
}

int runWindow(SingleInstance& instance, const std::filesystem::path& root, const StartOptions& options) {
    const LookWatcher looks(QDBusConnection::sessionBus(), processEnvironment().config);
    std::jthread fonts;
    std::optional<Parts> parts; // outlives the window
    QQmlEngine engine;
    MainWindow main(windowStart(looks.look(), rememberedSetting(themeSetting), rememberedSetting(sizeSetting),
                                rememberedSetting(placeSetting)));
    Wishes wishes;
    StatusBarController status(main.window());
    QObject::connect(&instance, &SingleInstance::quitAsked, qApp, &QCoreApplication::quit);
    QObject::connect(&status, &StatusBarController::quitAsked, qApp, &QCoreApplication::quit);
    const TerminationSignals termination;
    QObject::connect(&termination, &TerminationSignals::asked, qApp, [] {
        stopWork();
        QCoreApplication::quit();
    });
    QObject::connect(qApp, &QGuiApplication::commitDataRequest, qApp, &stopWork, Qt::DirectConnection);
    const QObject start;
    const auto fill = [&] {
        if (!parts) {
            fillWindow(main, engine, parts.emplace(looks, root), wishes);
            workingStore = &parts->store;
            std::atexit(&finishPathAtExit);
            status.install();
        }
    };
    QObject::connect(&main.window(), &QQuickWindow::frameSwapped, &start, fill, onceLater);
    const auto open = [&](const Wish& wish) {
        if (!fonts.joinable()) {
            fonts = findFontsAhead();
            main.loadAhead(engine);
        }
        wishes.grant(wish);
        status.showMainWindow();
        QTimer::singleShot(framePatience, &start, fill);
    };
    QObject::connect(&instance, &SingleInstance::activated, &start, open);
    if (options.kind == StartOptions::Kind::service) {
        QTimer::singleShot(servicePatience, &start, [&] {
            if (!parts) {
                QCoreApplication::quit();
            }
        });
    } else {
        open(options.wish);
    }
    const int result = QApplication::exec();
    main.window().hide();
    workingStore = nullptr;
    if (parts && !finishWork(parts->store)) {
        // A system call that does not return keeps a worker busy; what it uses must not be taken from under it.
        std::_Exit(result);
    }
    return result;
}

} // namespace

int runApplication(int argc, char* argv[], const std::filesystem::path& root) {
    const auto options = readStartOptions(std::span(argv, static_cast<std::size_t>(argc)).subspan(argc > 0 ? 1 : 0));
    if (!options) {
        std::fprintf(stderr, "vellmoor: %s\n", options.error().c_str());
        return usageStatus;
    }
    if (options->kind == StartOptions::Kind::help || options->kind == StartOptions::Kind::version) {
        const bool helps = options->kind == StartOptions::Kind::help;
        return std::fputs(helps ? helpText().c_str() : "vellmoor " VELLMOOR_VERSION "\n", stdout) < 0 ? EXIT_FAILURE
                                                                                                      : EXIT_SUCCESS;
    }
    QApplication application(argc, argv);
    nameApplication();
    L::setTextSet(TextSet::Linux);
    if (::geteuid() == 0) {
        std::fputs("vellmoor: running as root; it cleans root's own home, not that of another user\n", stderr);
    }
    SingleInstance instance(QDBusConnection::sessionBus(), instanceName(processEnvironment().home, accountHome()));
    if (!instance.claim() && instance.raiseOther(options->wish)) {
        return EXIT_SUCCESS;
    }
    if (options->kind == StartOptions::Kind::service) {
        instance.answerTo(applicationBusName());
    }
    chooseRenderer();
    return runWindow(instance, root, *options);
}

} // namespace vellmoor
