#include "MainWindow.h"

#include "Appearance.h"
#include "ApplicationIconProvider.h"
#include "Ground.h"
#include "ShadowImageProvider.h"
#include "SymbolImageProvider.h"
#include "Texts.h"

#include <QQuickItem>
#include <QVariant>

#include <utility>

namespace vellmoor {
namespace {

constexpr QSize windowSize{1080, 720};

/// The window's ground follows its size.
void layGround(QQuickWindow& window) {
    auto* ground = new Ground(window.contentItem());
    ground->setColors(Appearance::groundStart(), Appearance::groundMiddle(), Appearance::groundEnd());
    const auto fit = [ground, &window] { ground->setSize(window.size()); };
    QObject::connect(&window, &QWindow::widthChanged, ground, fit);
    QObject::connect(&window, &QWindow::heightChanged, ground, fit);
    fit();
}

} // namespace

MainWindow::MainWindow() : window_(std::make_unique<QQuickWindow>()) {
    window_->setTitle(QStringLiteral("Vellmoor"));
    window_->setColor(Appearance::groundMiddle());
    window_->setMinimumSize(windowSize);
    window_->resize(windowSize);
    layGround(*window_);
}

MainWindow::~MainWindow() = default;

void MainWindow::fill(QQmlEngine& engine, CleanerStore& store, LanguageManager& languages, Desktop& desktop,
                      QQmlComponent::CompilationMode mode, std::function<void(const Outcome&)> done) {
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine.addImageProvider(
        QStringLiteral("symbol"),
        new SymbolImageProvider([&desktop](const QString& name, int pixels) { return desktop.symbol(name, pixels); }));
    engine.addImageProvider(QStringLiteral("shadow"), new ShadowImageProvider);
    engine.addImageProvider(QStringLiteral("application"), new ApplicationIconProvider(desktop));
    Texts::setLanguages(engine, languages);
    Appearance::setDesktop(engine, desktop.prefersReducedMotion(), desktop.usualTextPoints());
    model_ = std::make_unique<WindowModel>(store, languages, desktop);
    QQmlEngine::setObjectOwnership(model_.get(), QQmlEngine::CppOwnership);
    QObject::connect(window_.get(), &QQuickWindow::activeChanged, model_.get(), [this] {
        if (window_->isActive()) {
            model_->activated();
        }
    });
    views_ =
        std::make_unique<QQmlComponent>(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Vellmoor/ContentView.qml")), mode);
    if (!views_->isLoading()) {
        done(createViews());
        return;
    }
    QObject::connect(views_.get(), &QQmlComponent::statusChanged, window_.get(),
                     [this, done = std::move(done)] { done(createViews()); });
}

MainWindow::Outcome MainWindow::createViews() {
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
    auto main = std::make_unique<MainWindow>();
    MainWindow::Outcome outcome;
    main->fill(engine, store, languages, desktop, QQmlComponent::PreferSynchronous,
               [&outcome](const MainWindow::Outcome& filled) { outcome = filled; });
    if (!outcome) {
        return std::unexpected(outcome.error());
    }
    return main;
}

} // namespace vellmoor
