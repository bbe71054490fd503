#include "MainWindow.h"

#include "Appearance.h"
#include "ApplicationIconProvider.h"
#include "ShadowImageProvider.h"
#include "SymbolImageProvider.h"
#include "Texts.h"

#include <QQmlComponent>
#include <QVariant>

namespace vellmoor {
namespace {

void prepareEngine(QQmlEngine& engine, LanguageManager& languages, Desktop& desktop) {
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine.addImageProvider(
        QStringLiteral("symbol"),
        new SymbolImageProvider([&desktop](const QString& name, int pixels) { return desktop.symbol(name, pixels); }));
    engine.addImageProvider(QStringLiteral("shadow"), new ShadowImageProvider);
    engine.addImageProvider(QStringLiteral("application"), new ApplicationIconProvider(desktop));
    Texts::setLanguages(engine, languages);
    Appearance::setDesktop(engine, desktop.prefersReducedMotion(), desktop.usualTextPoints());
}

} // namespace

MainWindow::MainWindow(std::unique_ptr<WindowModel> model, std::unique_ptr<QQuickWindow> window)
    : model_(std::move(model)),
      window_(std::move(window)) {}

std::expected<std::unique_ptr<MainWindow>, std::string> loadMainWindow(QQmlEngine& engine, CleanerStore& store,
                                                                       LanguageManager& languages, Desktop& desktop) {
    prepareEngine(engine, languages, desktop);
    auto model = std::make_unique<WindowModel>(store, languages, desktop);
    QQmlEngine::setObjectOwnership(model.get(), QQmlEngine::CppOwnership);
    QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Vellmoor/MainWindow.qml")));
    if (!component.isReady()) {
        return std::unexpected(component.errorString().toStdString());
    }
    std::unique_ptr<QObject> root(
        component.createWithInitialProperties({{QStringLiteral("vm"), QVariant::fromValue(model.get())}}));
    auto* window = qobject_cast<QQuickWindow*>(root.get());
    if (window == nullptr) {
        return std::unexpected(component.errorString().toStdString());
    }
    (void)root.release(); // the same object, owned as a window from here on
    return std::make_unique<MainWindow>(std::move(model), std::unique_ptr<QQuickWindow>(window));
}

} // namespace vellmoor
