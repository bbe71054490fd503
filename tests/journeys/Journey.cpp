#include "Journey.h"

#include "LinuxEnvironment.h"
#include "SystemCleanerService.h"

#include <QGuiApplication>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QTest>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <unistd.h>

namespace vellmoor::journey {
namespace {

constexpr int patienceMs = 60'000;

/// Every journey starts in an empty home.
const fs::path& emptiedHome() {
    for (const auto& entry : fs::directory_iterator(home())) {
        fs::remove_all(entry.path());
    }
    return home();
}

SystemLayout layoutOfHome() {
    const LinuxEnvironment environment = linuxEnvironmentOf(emptiedHome());
    SystemLayout layout = linuxLayout(environment, ::getuid());
    // No journey drops the machine's caches: this memory cannot be read, so its row cannot be ticked.
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

} // namespace

const fs::path& home() {
    static const fs::path folder = std::getenv("HOME");
    return folder;
}

Journey::Journey()
    : layout(layoutOfHome()),
      desktop(layout),
      service(std::make_shared<SystemCleanerService>(platform, layout)) {
    L::setTextSet(TextSet::Linux);
    store = std::make_unique<CleanerStore>(service, [] { return std::chrono::system_clock::now(); });
    LanguageSetting setting;
    setting.read = [] { return std::optional<std::string>("en"); };
    setting.write = [](const std::string&) {};
    languages = std::make_unique<LanguageManager>(setting, std::nullopt);
    engine = std::make_unique<QQmlEngine>();
}

Journey::~Journey() {
    window.reset();
    engine.reset();
}

void Journey::open() {
    auto loaded = loadMainWindow(*engine, *store, *languages, desktop);
    ASSERT_TRUE(loaded.has_value()) << loaded.error();
    window = std::move(*loaded);
    window->window().resize(1080, 720);
    window->window().show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window->window(), patienceMs));
}

QQuickItem* Journey::find(const QString& name) const {
    return findBelow(window->window().contentItem(), name);
}

bool Journey::isShown(const QString& name) const {
    return find(name) != nullptr;
}

QString Journey::textOf(const QString& name) const {
    const QQuickItem* item = find(name);
    return item == nullptr ? QString() : item->property("text").toString();
}

void Journey::waitFor(const char* what, const std::function<bool()>& condition) const {
    ASSERT_TRUE(QTest::qWaitFor(condition, patienceMs)) << "waited in vain for " << what;
}

void Journey::click(const QString& name) {
    waitFor(qPrintable(name), [&] {
        const QQuickItem* item = find(name);
        return item != nullptr && item->isEnabled();
    });
    QQuickItem* item = find(name);
    ASSERT_NE(item, nullptr) << qPrintable(name);
    const QPointF centre = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    ASSERT_TRUE(QRectF(QPointF(0, 0), QSizeF(window->window().size())).contains(centre)) << qPrintable(name);
    QTest::mouseClick(&window->window(), Qt::LeftButton, Qt::NoModifier, centre.toPoint());
    QCoreApplication::processEvents();
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

int Journey::listed(const std::string& title, const std::string& target) const {
    for (const CleanupItem& item : store->items(store->activeModule())) {
        if (item.title != title) {
            continue;
        }
        const auto found = std::ranges::find(item.targets, target, &CleanupTarget::name);
        return found == item.targets.end() ? -1 : static_cast<int>(found - item.targets.begin());
    }
    return -1;
}

fs::path Journey::file(const fs::path& relative, std::size_t bytes, int daysOld) {
    const fs::path path = home() / relative;
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << std::string(bytes, 'x');
    fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours(24 * daysOld));
    return path;
}

fs::path Journey::text(const fs::path& relative, const std::string& contents) {
    const fs::path path = home() / relative;
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << contents;
    return path;
}

bool Journey::has(const fs::path& relative) {
    return fs::symlink_status(home() / relative).type() != fs::file_type::not_found;
}

int Journey::run(const std::string& command, std::string* output) {
    FILE* pipe = ::popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr) {
        return -1;
    }
    std::array<char, 4096> buffer{};
    std::string all;
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
        all.append(buffer.data(), count);
    }
    if (output != nullptr) {
        *output = all;
    }
    return ::pclose(pipe);
}

} // namespace vellmoor::journey

/// Every journey runs in a home of its own; nothing may read $HOME before it is set.
int main(int argc, char** argv) {
    std::string folder = (std::filesystem::temp_directory_path() / "vellmoor-journey-XXXXXX").string();
    if (::mkdtemp(folder.data()) == nullptr) {
        std::perror("mkdtemp");
        return 1;
    }
    ::setenv("HOME", folder.c_str(), 1);
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR",
                             "XDG_CURRENT_DESKTOP", "CARGO_HOME", "PIP_CACHE_DIR", "GOPATH", "CCACHE_DIR"}) {
        ::unsetenv(name);
    }
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    ::setenv("QT_QUICK_BACKEND", "software", 1);
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    QGuiApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    const int result = RUN_ALL_TESTS();
    std::error_code ignored; // a leftover in the temporary folder hurts nobody
    std::filesystem::remove_all(folder, ignored);
    return result;
}
