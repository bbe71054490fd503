#include "Photographer.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QQuickItem>
#include <QTest>

#include <chrono>
#include <cstdio>

namespace vellmoor {
namespace {

LanguageSetting fixedLanguage(AppLanguage language) {
    return {.read = [language] { return std::optional(std::string(rawValue(language))); },
            .write = [](const std::string&) {}};
}

void settle() {
    // A few turns of the loop: queued selection changes, bindings, layouts, pictures of symbols.
    for (int turn = 0; turn < 4; ++turn) {
        QCoreApplication::processEvents();
    }
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
    settle();
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

Photographer::Photographer(std::shared_ptr<CleanerService> service, Desktop& desktop, AppLanguage language)
    : languages_(fixedLanguage(language), std::nullopt),
      store_(std::move(service), [] { return std::chrono::system_clock::now(); }) {
    auto loaded = loadMainWindow(engine_, store_, languages_, desktop);
    if (!loaded) {
        std::fprintf(stderr, "%s\n", loaded.error().c_str());
        return;
    }
    window_ = std::move(*loaded);
    window_->window().show();
    window_->window().requestActivate();
    QCoreApplication::processEvents();
}

bool Photographer::waitFor(const std::function<bool()>& done, int seconds) {
    const QDeadlineTimer limit(std::chrono::seconds{seconds});
    while (!done() && !limit.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 50);
    }
    return done();
}

void Photographer::show(CleanerModule module) {
    const std::string_view raw = rawValue(module);
    window_->model().setModule(QString::fromUtf8(raw.data(), static_cast<qsizetype>(raw.size())));
}

void Photographer::scan() {
    window_->model().refresh();
    waitFor([this] { return !store_.isScanning(); });
}

bool Photographer::click(const QString& objectName) {
    settle();
    QQuickItem* item = findItem(window_->window().contentItem(), objectName);
    if (item == nullptr) {
        std::fprintf(stderr, "nothing called %s is visible\n", qPrintable(objectName));
        return false;
    }
    bringIntoView(item);
    const QPointF center = item->mapToScene({item->width() / 2, item->height() / 2});
    QTest::mouseClick(&window_->window(), Qt::LeftButton, Qt::NoModifier, center.toPoint());
    return true;
}

bool Photographer::take(const std::filesystem::path& file) {
    settle();
    return window_->window().grabWindow().save(QString::fromStdString(file.string()));
}

} // namespace vellmoor
