#include "WindowDriver.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QQuickItem>
#include <QTest>

#include <chrono>
#include <cstdio>

namespace vellmoor {
namespace {

constexpr QSize usualSize{1080, 720};

LanguageSetting fixedLanguage(AppLanguage language) {
    return {.read = [language] { return std::optional(std::string(rawValue(language))); },
            .write = [](const std::string&) {}};
}

/// Scrolls what lies around `item` until it is in view.
void bringIntoView(QQuickItem* item) {
    for (QQuickItem* around = item->parentItem(); around != nullptr; around = around->parentItem()) {
        if (!around->inherits("QQuickFlickable")) {
            continue;
        }
        const double top = item->mapToItem(around, QPointF()).y();
        const double past = top + item->height() - around->height();
        if (top < 0 || past > 0) {
            around->setProperty("contentY", around->property("contentY").toDouble() + (top < 0 ? top : past));
        }
    }
}

} // namespace

QQuickItem* findItem(QQuickItem* root, const QString& objectName) {
    if (!root->isVisible()) {
        return nullptr;
    }
    if (root->objectName() == objectName) {
        return root;
    }
    for (QQuickItem* child : root->childItems()) {
        if (QQuickItem* found = findItem(child, objectName)) {
            return found;
        }
    }
    return nullptr;
}

WindowDriver::WindowDriver(std::shared_ptr<CleanerService> service, Desktop& desktop, AppLanguage language)
    : languages_(fixedLanguage(language), std::nullopt),
      store_(std::move(service), [] { return std::chrono::system_clock::now(); }),
      sources_(qEnvironmentVariable("VELLMOOR_QML_SOURCES")) {
    if (qEnvironmentVariableIsSet("VELLMOOR_QML_SOURCES")) {
        engine_.addUrlInterceptor(&sources_);
    }
    auto loaded = loadMainWindow(engine_, store_, languages_, desktop);
    if (!loaded) {
        std::fprintf(stderr, "%s\n", loaded.error().c_str());
        return;
    }
    window_ = std::move(*loaded);
    resize(usualSize); // the screen of a platform without a display is smaller
    window_->window().show();
    window_->window().requestActivate();
    QCoreApplication::processEvents();
}

bool WindowDriver::waitFor(const std::function<bool()>& done, int seconds) {
    const QDeadlineTimer limit(std::chrono::seconds{seconds});
    while (!done() && !limit.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 50);
    }
    return done();
}

void WindowDriver::resize(QSize size) {
    window_->window().setMinimumSize(size.boundedTo(window_->window().minimumSize()));
    window_->window().resize(size);
}

void WindowDriver::show(CleanerModule module) {
    const std::string_view raw = rawValue(module);
    window_->model().setModule(QString::fromUtf8(raw.data(), static_cast<qsizetype>(raw.size())));
}

void WindowDriver::scan() {
    window_->model().refresh();
    waitFor([this] { return !store_.isScanning(); });
}

void WindowDriver::settle() {
    for (int turn = 0; turn < 4; ++turn) {
        QCoreApplication::processEvents();
        // Lists make and place their rows while the window is polished; nothing else asks for it without a display.
        window_->window().grabWindow();
    }
}

QQuickItem* WindowDriver::item(const QString& objectName, const QString& within) {
    settle();
    QQuickItem* root = window_->window().contentItem();
    if (!within.isEmpty()) {
        root = findItem(root, within);
    }
    return root == nullptr ? nullptr : findItem(root, objectName);
}

QString WindowDriver::text(const QString& objectName) {
    const QQuickItem* found = item(objectName);
    return found == nullptr ? QStringLiteral("<nothing>") : found->property("text").toString();
}

bool WindowDriver::click(const QString& objectName, Qt::MouseButton button, const QString& within) {
    QQuickItem* target = item(objectName, within);
    if (target == nullptr) {
        std::fprintf(stderr, "nothing called %s is visible\n", qPrintable(objectName));
        return false;
    }
    bringIntoView(target);
    settle();
    const QPointF center = target->mapToScene({target->width() / 2, target->height() / 2});
    QTest::mouseClick(&window_->window(), button, Qt::NoModifier, center.toPoint());
    settle();
    return true;
}

void WindowDriver::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(&window_->window(), key, modifiers);
    settle();
}

bool WindowDriver::take(const std::filesystem::path& file) {
    settle();
    return window_->window().grabWindow().save(QString::fromStdString(file.string()));
}

} // namespace vellmoor
