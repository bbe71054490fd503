#include "WindowKeeper.h"

#include "MainWindow.h"

#include <QEvent>
#include <QQmlEngine>
#include <QTimer>

#include <algorithm>

namespace vellmoor {

/// What goes with the window, in the order in which it is made.
struct WindowKeeper::View {
    explicit View(std::shared_ptr<CleanerService> service)
        : store(std::make_unique<CleanerStore>(std::move(service), [] { return std::chrono::system_clock::now(); })) {}

    std::unique_ptr<CleanerStore> store;
    QQmlEngine engine;
    std::unique_ptr<MainWindow> main;
};

WindowKeeper::WindowKeeper(std::shared_ptr<CleanerService> service, LanguageManager& languages, Desktop& desktop,
                           Fronting fronting, QObject* parent)
    : QObject(parent),
      service_(std::move(service)),
      languages_(languages),
      desktop_(desktop),
      fronting_(std::move(fronting)) {}

WindowKeeper::~WindowKeeper() = default;

QQuickWindow* WindowKeeper::window() const {
    return view_ ? &view_->main->window() : nullptr;
}

CleanerStore* WindowKeeper::store() const {
    return view_ ? view_->store.get() : nullptr;
}

std::expected<void, std::string> WindowKeeper::make() {
    auto view = std::make_unique<View>(service_);
    auto main = loadMainWindow(view->engine, *view->store, languages_, desktop_);
    if (!main) {
        return std::unexpected(main.error());
    }
    view->main = *std::move(main);
    view->main->window().installEventFilter(this);
    connect(&view->engine, &QQmlEngine::quit, this, &WindowKeeper::quitAsked, Qt::QueuedConnection);
    connect(view->store.get(), &CleanerStore::isScanningChanged, this, &WindowKeeper::tellBusy);
    connect(view->store.get(), &CleanerStore::isCleaningChanged, this, &WindowKeeper::tellBusy);
    view_ = std::move(view);
    return {};
}

void WindowKeeper::tellBusy() {
    const bool isBusy = isCleaning() || (view_ && view_->store->isScanning());
    if (isBusy != wasBusy_) {
        wasBusy_ = isBusy;
        Q_EMIT busyChanged(isBusy);
    }
    if (isBusy && !leaving_.empty()) { // nobody tells the end of what a closed window began
        QTimer::singleShot(std::chrono::seconds(1), this, &WindowKeeper::tellBusy);
    }
}

std::expected<void, std::string> WindowKeeper::show() {
    fronting_.activate();
    const bool isNew = !view_;
    if (isNew) {
        if (auto made = make(); !made) {
            return made;
        }
    }
    view_->main->window().show();
    fronting_.raise(view_->main->window());
    if (isNew) {
        // The system may settle a new window behind those of other programs; once more when that has happened.
        QMetaObject::invokeMethod(this, "frontAgain", Qt::QueuedConnection);
    }
    return {};
}

void WindowKeeper::frontAgain() {
    if (view_) {
        fronting_.activate();
        fronting_.raise(view_->main->window());
    }
}

bool WindowKeeper::eventFilter(QObject* watched, QEvent* event) {
    if (watched == window() && event->type() == QEvent::Close) {
        // Later: the window is still in the middle of its own event.
        QMetaObject::invokeMethod(this, "discard", Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

void WindowKeeper::discard() {
    if (view_ && !view_->main->window().isVisible()) { // it may have been shown again meanwhile
        const std::unique_ptr<View> gone = std::move(view_);
        gone->main.reset();
        leaving_.push_back(std::move(gone->store));
        tellBusy();
    }
    std::erase_if(leaving_, [](const auto& store) { return store->shutDown(std::chrono::milliseconds::zero()); });
}

void WindowKeeper::hide() {
    if (view_) {
        view_->main->window().hide();
    }
}

bool WindowKeeper::isCleaning() const {
    // A store that was shut down hears no more of its workers: whether they have ended is all there is to ask.
    const auto stillCleans = [](const auto& store) {
        return store->isCleaning() && !store->shutDown(std::chrono::milliseconds::zero());
    };
    return std::ranges::any_of(leaving_, stillCleans) || (view_ && view_->store->isCleaning());
}

bool WindowKeeper::shutDown(Patience patience) {
    const auto ends = [&](const std::unique_ptr<CleanerStore>& store) {
        return store->shutDown(store->isCleaning() ? patience.action : patience.scan);
    };
    bool isIdle = std::ranges::all_of(leaving_, ends);
    if (view_) {
        hide();
        isIdle = ends(view_->store) && isIdle;
    }
    return isIdle;
}

} // namespace vellmoor
