#include "MainWindow.h"

#include "ApplicationIconProvider.h"
#include "Ground.h"
#include "QtText.h"
#include "ShadowImageProvider.h"
#include "Spoken.h"
#include "SymbolImageProvider.h"
#include "Texts.h"

#include <QEvent>
#include <QGuiApplication>
#include <QQuickItem>
#include <QScreen>
#include <QVariant>

#include <algorithm>
#include <utility>

namespace vellmoor {
namespace {

constexpr QSize usualSize{1080, 720};
constexpr QSize leastSize{800, 560};
/// Room for the title bar that a desktop puts around a window.
constexpr int frameHeight = 40;

std::optional<QSize> sizeOf(const std::string& text) {
    const QStringList parts = QString::fromStdString(text).split(QLatin1Char('x'));
    const QSize size(parts.value(0).toInt(), parts.value(1).toInt());
    return parts.size() == 2 && !size.isEmpty() ? std::optional(size) : std::nullopt;
}

std::optional<QPoint> placeOf(const std::string& text) {
    const QStringList parts = QString::fromStdString(text).split(QLatin1Char(','));
    bool isLeft = false;
    bool isTop = false;
    const QPoint place(parts.value(0).toInt(&isLeft), parts.value(1).toInt(&isTop));
    return parts.size() == 2 && isLeft && isTop ? std::optional(place) : std::nullopt;
}

/// A screen may be gone since the window was there.
bool isOnAScreen(const QRect& area) {
    return std::ranges::any_of(QGuiApplication::screens(),
                               [&](const QScreen* screen) { return screen->availableGeometry().contains(area); });
}

/// The name under which the choices of a module's list are remembered.
std::string listSetting(CleanerModule module) {
    return "vmList." + std::string(rawValue(module));
}

} // namespace

WindowStart windowStart(const DesktopLook& look, const std::optional<std::string>& theme,
                        const std::optional<std::string>& size, const std::optional<std::string>& place) {
    WindowStart start;
    start.look = look;
    if (theme) {
        start.theme = themeChoice(QString::fromStdString(*theme)).value_or(ThemeChoice::system);
    }
    if (size) {
        start.size = sizeOf(*size);
    }
    if (place) {
        start.place = placeOf(*place);
    }
    return start;
}

QSize smallestWindow(QSize available) {
    const QSize inside(available.width(), available.height() - frameHeight);
    if (inside.width() >= usualSize.width() && inside.height() >= usualSize.height()) {
        return usualSize;
    }
    // A screen at 200 % may have less than even that.
    return leastSize.boundedTo(inside);
}

MainWindow::MainWindow(const WindowStart& start)
    : appearance_(start.look, start.theme),
      window_(std::make_unique<QQuickWindow>()) {
    Spoken::install();
    const QSize available = window_->screen()->availableSize();
    const QSize largest = available - QSize(0, frameHeight);
    window_->setTitle(QStringLiteral("Vellmoor"));
    window_->setMinimumSize(smallestWindow(available));
    window_->resize(start.size.value_or(usualSize).boundedTo(largest).expandedTo(window_->minimumSize()));
    if (start.place && isOnAScreen(QRect(*start.place, window_->size()))) {
        window_->setFramePosition(*start.place);
    }
    layGround();
}

MainWindow::~MainWindow() {
    if (desktop_ != nullptr) {
        desktop_->whenLookChanges({});
        desktop_->whenActionFails({});
    }
}

void MainWindow::bringToFront() {
    if (window_->visibility() == QWindow::Minimized) {
        window_->showNormal();
    } else {
        window_->show();
    }
    window_->raise();
    window_->requestActivate();
}

bool MainWindow::Closing::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Close && watched == main_.window_.get() && main_.model_ && !main_.model_->mayClose()) {
        event->ignore();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

/// The window's ground follows its size and the theme.
void MainWindow::layGround() {
    auto* ground = new Ground(window_->contentItem());
    const auto fit = [this, ground] { ground->setSize(window_->size()); };
    const auto paint = [this, ground] {
        window_->setColor(appearance_.groundMiddle());
        ground->setColors(appearance_.groundStart(), appearance_.groundMiddle(), appearance_.groundEnd());
    };
    QObject::connect(window_.get(), &QWindow::widthChanged, ground, fit);
    QObject::connect(window_.get(), &QWindow::heightChanged, ground, fit);
    QObject::connect(&appearance_, &Appearance::changed, ground, paint);
    fit();
    paint();
}

void MainWindow::followDesktop(Desktop& desktop) {
    desktop_ = &desktop;
    appearance_.follow(desktop.look());
    desktop.whenLookChanges([this, &desktop] { appearance_.follow(desktop.look()); });
    QObject::connect(model_.get(), &WindowModel::finishedAside, window_.get(), [this, &desktop](const QString& text) {
        desktop.notify(QStringLiteral("Vellmoor"), text, [this] { bringToFront(); });
    });
    desktop.whenActionFails([this](std::string_view key) { model_->showNotice(localised(key), true); });
}

bool MainWindow::isMaximised() const {
    return window_->windowStates().testFlag(Qt::WindowMaximized);
}

void MainWindow::rememberIn(Desktop& desktop) {
    QObject::connect(&appearance_, &Appearance::choiceChanged, window_.get(),
                     [this, &desktop] { desktop.remember(themeSetting, appearance_.choice().toStdString()); });
    QObject::connect(model_.get(), &WindowModel::moduleChanged, window_.get(),
                     [this, &desktop] { desktop.remember(moduleSetting, model_->module().toStdString()); });
    rememberWindow(desktop);
    rememberLists(desktop);
}

/// Only what the user changed is worth a file.
void MainWindow::rememberWindow(Desktop& desktop) {
    QObject::connect(window_.get(), &QWindow::visibleChanged, window_.get(),
                     [this, &desktop, size = window_->size(), place = window_->framePosition()](bool visible) {
                         if (visible || isMaximised()) {
                             return;
                         }
                         if (window_->size() != size) {
                             const QString text = QStringLiteral("%1x%2").arg(window_->width()).arg(window_->height());
                             desktop.remember(sizeSetting, text.toStdString());
                         }
                         if (const QPoint now = window_->framePosition(); now != place) {
                             desktop.remember(placeSetting,
                                              QStringLiteral("%1,%2").arg(now.x()).arg(now.y()).toStdString());
                         }
                     });
}

void MainWindow::rememberLists(Desktop& desktop) {
    for (const CleanerModule module : allCleanerModules) {
        if (const auto choice = desktop.remembered(listSetting(module))) {
            model_->listOf(module).recallChoice(module, QString::fromStdString(*choice));
        }
    }
    for (CleanupListModel* list : {model_->items(), static_cast<CleanupListModel*>(model_->largeFiles())}) {
        const auto note = [this, list, &desktop] {
            if (&model_->listOf(list->module()) != list) {
                return; // the list of a page that another list shows
            }
            const std::string name = listSetting(list->module());
            const std::string choice = list->choiceText().toStdString();
            if (choice != desktop.remembered(name).value_or("all given")) {
                desktop.remember(name, choice);
            }
        };
        QObject::connect(list, &CleanupListModel::filterChanged, window_.get(), note);
        if (list == model_->largeFiles()) {
            QObject::connect(model_->largeFiles(), &LargeFileListModel::filtersChanged, window_.get(), note);
        }
    }
}

void MainWindow::loadAhead(QQmlEngine& engine) {
    load(engine, QQmlComponent::Asynchronous);
}

void MainWindow::load(QQmlEngine& engine, QQmlComponent::CompilationMode mode) {
    if (!views_) {
        types_.emplace(engine);
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        views_ = std::make_unique<QQmlComponent>(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Vellmoor/ContentView.qml")),
                                                 mode);
    }
}

void MainWindow::fill(QQmlEngine& engine, CleanerStore& store, LanguageManager& languages, Desktop& desktop,
                      QQmlComponent::CompilationMode mode, std::function<void(const Outcome&)> done) {
    engine.addImageProvider(
        QStringLiteral("symbol"),
        new SymbolImageProvider([&desktop](const QString& name, int pixels) { return desktop.symbol(name, pixels); },
                                desktop.drawsOnAnyThread()));
    engine.addImageProvider(QStringLiteral("shadow"), new ShadowImageProvider);
    engine.addImageProvider(QStringLiteral("application"), new ApplicationIconProvider(desktop));
    Texts::setLanguages(engine, languages);
    appearance_.serve(engine);
    model_ = std::make_unique<WindowModel>(store, languages, desktop);
    followDesktop(desktop);
    if (const auto module = desktop.remembered(moduleSetting)) {
        model_->setModule(QString::fromStdString(*module));
    }
    rememberIn(desktop);
    QQmlEngine::setObjectOwnership(model_.get(), QQmlEngine::CppOwnership);
    QObject::connect(model_.get(), &WindowModel::closingAgreed, window_.get(), &QWindow::close, Qt::QueuedConnection);
    window_->installEventFilter(&closing_); // the last one is asked first
    QObject::connect(window_.get(), &QQuickWindow::activeChanged, model_.get(), [this, &store] {
        model_->setActive(window_->isActive());
        if (window_->isActive()) {
            model_->activated();
            if (store.activeModule() == CleanerModule::trash) {
                store.loadHistory(); // the command line may have cleaned meanwhile
            }
        }
    });
    load(engine, mode);
    const auto finish = [this, &store, done = std::move(done)] {
        done(createViews());
        store.recover(); // not before: it would take a processor from the loading
    };
    if (!views_->isLoading()) {
        finish();
        return;
    }
    QObject::connect(views_.get(), &QQmlComponent::statusChanged, window_.get(), finish);
}

MainWindow::Outcome MainWindow::createViews() {
    types_.reset(); // the views have imported them
    if (window_->isActive()) {
        model_->activated();
    }
    QObject* views = views_->isReady() ? views_->createWithInitialProperties(
                                             {{QStringLiteral("vm"), QVariant::fromValue(model_.get())},
                                              {QStringLiteral("parent"), QVariant::fromValue(window_->contentItem())}})
                                       : nullptr;
    if (views == nullptr) {
        return std::unexpected(views_->errorString().toStdString());
    }
    views->setParent(window_.get());
    return {};
}

std::expected<std::unique_ptr<MainWindow>, std::string> loadMainWindow(QQmlEngine& engine, CleanerStore& store,
                                                                       LanguageManager& languages, Desktop& desktop) {
    auto main =
        std::make_unique<MainWindow>(windowStart(desktop.look(), desktop.remembered(themeSetting),
                                                 desktop.remembered(sizeSetting), desktop.remembered(placeSetting)));
    MainWindow::Outcome outcome;
    main->fill(engine, store, languages, desktop, QQmlComponent::PreferSynchronous,
               [&outcome](const MainWindow::Outcome& filled) { outcome = filled; });
    if (!outcome) {
        return std::unexpected(outcome.error());
    }
    return main;
}

} // namespace vellmoor
