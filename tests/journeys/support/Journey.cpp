#include "Journey.h"

#include "layouts/linux/LinuxEnvironment.h"
#include "service/SystemCleanerService.h"

#include <QQuickWindow>
#include <QTest>

#include <algorithm>
#include <chrono>
#include <unistd.h>

namespace vellmoor::journey {
namespace {

constexpr int patienceMs = 60'000;

/// Every journey starts in an empty home.
SystemLayout layoutOfHome() {
    const LinuxEnvironment environment = linuxEnvironmentOf(emptiedHome());
    SystemLayout layout = linuxLayout(environment, ::getuid());
    // No journey drops the machine's caches or sees its programs: this memory cannot be read, so its row cannot be
    // ticked, and only the processes that a journey links into that folder are there.
    layout.memory = linuxMemoryLayout(environment, ::getuid(), home() / "no-such-system");
    return layout;
}

QQuickItem* findBelow(QQuickItem* item, const QString& name) {
    if (item->objectName() == name && item->isVisible()) {
        return item;
    }
    const auto children = item->childItems();
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
        if (QQuickItem* found = findBelow(*child, name)) {
            return found;
        }
    }
    return nullptr;
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

Journey::Journey(AppLanguage language)
    : layout(layoutOfHome()),
      desktop(layout),
      service(std::make_shared<HeldService>(std::make_shared<SystemCleanerService>(platform, layout))) {
    L::setTextSet(TextSet::Linux);
    store = std::make_unique<CleanerStore>(service, [] { return std::chrono::system_clock::now(); });
    LanguageSetting setting;
    setting.read = [language] { return std::optional(std::string(rawValue(language))); };
    setting.write = [](const std::string&) {};
    languages = std::make_unique<LanguageManager>(setting, std::nullopt);
    engine = std::make_unique<QQmlEngine>();
}

Journey::~Journey() {
    service->release();
    window.reset();
    engine.reset();
}

void Journey::open(QSize size) {
    auto loaded = loadMainWindow(*engine, *store, *languages, desktop);
    ASSERT_TRUE(loaded.has_value()) << loaded.error();
    window = std::move(*loaded);
    window->window().setMinimumSize(size.boundedTo(window->window().minimumSize()));
    window->window().resize(size);
    window->window().show();
    window->window().requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window->window(), patienceMs));
}

QQuickItem* Journey::find(const QString& name, const QString& within) const {
    QQuickItem* root = window->window().contentItem();
    if (!within.isEmpty()) {
        root = findBelow(root, within);
    }
    return root == nullptr ? nullptr : findBelow(root, name);
}

bool Journey::isShown(const QString& name, const QString& within) const {
    return find(name, within) != nullptr;
}

bool Journey::isTicked(const QString& name, const QString& within) const {
    const QQuickItem* item = find(name, within);
    return item != nullptr && item->property("ticked").toBool();
}

QString Journey::textOf(const QString& name) const {
    const QQuickItem* item = find(name);
    return item == nullptr ? QString() : item->property("text").toString();
}

QString Journey::valueOf(const QString& name) const {
    const QQuickItem* item = find(name);
    return item == nullptr ? QString() : item->property("value").toString();
}

void Journey::waitFor(const char* what, const std::function<bool()>& condition) const {
    ASSERT_TRUE(QTest::qWaitFor(condition, patienceMs)) << "waited in vain for " << what;
}

void Journey::settle() {
    QCoreApplication::processEvents();
    // Lists make and place their rows while the window is polished; nothing else asks for it without a display.
    window->window().grabWindow();
}

void Journey::click(const QString& name, const QString& within) {
    waitFor(qPrintable(name), [&] {
        const QQuickItem* item = find(name, within);
        return item != nullptr && item->isEnabled();
    });
    settle();
    QQuickItem* item = find(name, within);
    ASSERT_NE(item, nullptr) << qPrintable(name);
    bringIntoView(item);
    settle();
    const QPointF centre = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    ASSERT_TRUE(QRectF(QPointF(0, 0), QSizeF(window->window().size())).contains(centre)) << qPrintable(name);
    QTest::mouseClick(&window->window(), Qt::LeftButton, Qt::NoModifier, centre.toPoint());
    settle();
}

void Journey::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(&window->window(), key, modifiers);
    QCoreApplication::processEvents();
}

void Journey::show(CleanerModule module) {
    click(QStringLiteral("sidebar.") + QString::fromUtf8(rawValue(module).data(), qsizetype(rawValue(module).size())));
    waitFor("the module", [&] { return store->activeModule() == module; });
}

void Journey::scan() {
    click(QStringLiteral("scanButton"));
    waitFor("the end of the scan", [&] { return !store->isScanning() && store->scanProgress() == 1.0; });
    settle();
}

void Journey::askClean() {
    click(QStringLiteral("cleanButton"));
    if (window->model().offer()->previewsClean()) {
        click(QStringLiteral("details.clean"));
    }
}

void Journey::clean() {
    askClean();
    click(QStringLiteral("confirm.accept"));
    waitForReport();
}

void Journey::waitForReport() {
    waitFor("the report", [&] { return store->latestReport().has_value(); });
    waitFor("the rescan", [&] { return !store->isCleaning() && !store->isScanning(); });
    settle();
}

int Journey::listed(const std::string& title) const {
    const auto indices = store->itemIndices(store->activeModule(), CleanupFilter::all);
    for (std::size_t row = 0; row < indices.size(); ++row) {
        if (store->cleanupItems().at(static_cast<std::size_t>(indices[row])).title == title) {
            return static_cast<int>(row);
        }
    }
    return -1;
}

const CleanupItem* Journey::item(const std::string& title) const {
    for (const int index : store->itemIndices(store->activeModule(), CleanupFilter::all)) {
        const CleanupItem& candidate = store->cleanupItems().at(static_cast<std::size_t>(index));
        if (candidate.title == title) {
            return &candidate;
        }
    }
    return nullptr;
}

int Journey::listed(const std::string& title, const std::string& target) const {
    const CleanupItem* found = item(title);
    if (found == nullptr) {
        return -1;
    }
    const auto path = std::ranges::find(found->targets, target, &CleanupTarget::name);
    return path == found->targets.end() ? -1 : static_cast<int>(path - found->targets.begin());
}

QString Journey::row(const std::string& title) const {
    return QStringLiteral("item.%1").arg(listed(title));
}

QString Journey::row(const std::string& title, const std::string& target) const {
    return QStringLiteral("%1.target.%2").arg(row(title)).arg(listed(title, target));
}

} // namespace vellmoor::journey
