#include "MainWindow.h"

#include "Appearance.h"
#include "ApplicationIconProvider.h"
#include "ShadowImageProvider.h"
#include "SymbolImageProvider.h"
#include "Texts.h"

#include <QQuickItem>
#include <QVariant>

#include <utility>

namespace vellmoor {
namespace {

QUrl fileOf(const char* view) {
    return {QStringLiteral("qrc:/qt/qml/Vellmoor/") + QLatin1String(view)};
}

std::unexpected<std::string> errorOf(const QQmlComponent& component) {
    return std::unexpected(component.errorString().toStdString());
}

} // namespace

MainWindow::Opened MainWindow::open(QQmlEngine& engine) {
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    QQmlComponent component(&engine, fileOf("MainWindow.qml"));
    std::unique_ptr<QObject> root(component.create());
    auto* window = qobject_cast<QQuickWindow*>(root.get());
    if (window == nullptr) {
        return errorOf(component);
    }
    (void)root.release(); // the same object, owned as a window from here on
    return std::make_unique<MainWindow>(engine, std::unique_ptr<QQuickWindow>(window));
}

MainWindow::MainWindow(QQmlEngine& engine, std::unique_ptr<QQuickWindow> window)
    : engine_(engine),
      window_(std::move(window)) {}

MainWindow::~MainWindow() = default;

void MainWindow::fill(CleanerStore& store, LanguageManager& languages, Desktop& desktop,
                      QQmlComponent::CompilationMode mode, std::function<void(const Outcome&)> done) {
    engine_.addImageProvider(
        QStringLiteral("symbol"),
        new SymbolImageProvider([&desktop](const QString& name, int pixels) { return desktop.symbol(name, pixels); }));
    engine_.addImageProvider(QStringLiteral("shadow"), new ShadowImageProvider);
    engine_.addImageProvider(QStringLiteral("application"), new ApplicationIconProvider(desktop));
    Texts::setLanguages(engine_, languages);
    Appearance::setDesktop(engine_, desktop.prefersReducedMotion(), desktop.usualTextPoints());
    model_ = std::make_unique<WindowModel>(store, languages, desktop);
    QQmlEngine::setObjectOwnership(model_.get(), QQmlEngine::CppOwnership);
    QObject::connect(window_.get(), &QQuickWindow::activeChanged, model_.get(), [this] {
        if (window_->isActive()) {
            model_->activated();
        }
    });
    views_ = std::make_unique<QQmlComponent>(&engine_, fileOf("ContentView.qml"), mode);
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
        return errorOf(*views_);
    }
    views->setParent(window_.get());
    return {};
}

MainWindow::Opened loadMainWindow(QQmlEngine& engine, CleanerStore& store, LanguageManager& languages,
                                  Desktop& desktop) {
    MainWindow::Opened main = MainWindow::open(engine);
    if (!main) {
        return main;
    }
    MainWindow::Outcome outcome;
    (*main)->fill(store, languages, desktop, QQmlComponent::PreferSynchronous,
                  [&outcome](const MainWindow::Outcome& filled) { outcome = filled; });
    if (!outcome) {
        return std::unexpected(outcome.error());
    }
    return main;
}

} // namespace vellmoor
