#include "StoreFixture.h"

#include "texts/L.h"

#include <QCoreApplication>
#include <QTimer>

#include <thread>

namespace vellmoor {
namespace {

constexpr std::chrono::seconds patience{30};

/// Qt's event loop needs an application; one for the whole program.
class Application : public ::testing::Environment {
public:
    void SetUp() override { application_ = std::make_unique<QCoreApplication>(count_, arguments_); }
    void TearDown() override { application_.reset(); }

private:
    int count_ = 1;
    char name_[12] = "store_tests";
    char* arguments_[2] = {name_, nullptr};
    std::unique_ptr<QCoreApplication> application_;
};

[[maybe_unused]] const auto* const application = ::testing::AddGlobalTestEnvironment(new Application);

} // namespace

CleanupItem row(CleanerModule module, const std::string& title, std::initializer_list<std::int64_t> sizes,
                bool selected) {
    CleanupItem item;
    item.module = module;
    item.title = title;
    item.risk = CleanupRisk::safe;
    item.isCleanable = true;
    item.isSelected = selected;
    for (const std::int64_t bytes : sizes) {
        CleanupTarget target;
        target.name = title + " " + std::to_string(item.targets.size());
        target.url = "/home/user/" + target.name;
        target.bytes = bytes;
        target.files = 1;
        target.isSelected = selected;
        item.bytes += bytes;
        item.files += 1;
        item.targets.edit().push_back(target);
    }
    return item;
}

PermissionHint hint(const std::string& title, bool granted, std::vector<CleanerModule> affected) {
    PermissionHint made;
    made.title = title;
    made.isGranted = granted;
    made.affectedModules = std::move(affected);
    return made;
}

ScanSnapshot snapshotOf(std::vector<CleanupItem> items) {
    ScanSnapshot snapshot;
    snapshot.cleanupItems = std::move(items);
    return snapshot;
}

std::vector<std::string> titles(const std::vector<CleanupItem>& items) {
    std::vector<std::string> all;
    for (const CleanupItem& item : items) {
        all.push_back(item.title);
    }
    return all;
}

StoreFixture::StoreFixture() {
    L::setTextSet(TextSet::Mac);
    L::setLanguage(AppLanguage::english);
    store = std::make_unique<CleanerStore>(service, [this] { return now; }, std::chrono::milliseconds(0));
}

void StoreFixture::processUntil(const std::function<bool()>& done) {
    bool late = false;
    QTimer alarm;
    alarm.setSingleShot(true);
    QObject::connect(&alarm, &QTimer::timeout, &alarm, [&late] { late = true; });
    alarm.start(patience);
    while (!done()) {
        ASSERT_FALSE(late) << "what was waited for did not happen";
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

void StoreFixture::processQueued() {
    QCoreApplication::processEvents();
}

void StoreFixture::awaitPosts(long remaining) const {
    // The fixture and the store hold the engine, and every worker until it has posted its last word.
    const long owners = store ? 2 : 1;
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (service.use_count() > owners + remaining) {
        ASSERT_LT(std::chrono::steady_clock::now(), deadline) << "a worker does not end";
        std::this_thread::yield();
    }
}

void StoreFixture::awaitWorkers(long remaining) const {
    awaitPosts(remaining);
    processQueued();
}

void StoreFixture::answer(const ScanSnapshot& snapshot) {
    service->onScan([snapshot](CleanerModule, const ProgressCallback&, const CancelToken&) { return snapshot; });
}

void StoreFixture::scanned(CleanerModule module, const ScanSnapshot& snapshot) {
    answer(snapshot);
    store->scan(module, true);
    processUntil([this] { return !store->isScanning(); });
}

void StoreFixture::answerBehind(const std::shared_ptr<Gate>& gate, const ScanSnapshot& snapshot) {
    service->onScan([gate, snapshot](CleanerModule, const ProgressCallback&, const CancelToken&) {
        gate->pass();
        return snapshot;
    });
}

std::shared_ptr<Gate> StoreFixture::startGatedScan(CleanerModule module, const ScanSnapshot& snapshot,
                                                   bool clearsReport) {
    const auto gate = std::make_shared<Gate>();
    answerBehind(gate, snapshot);
    store->scan(module, clearsReport);
    gate->awaitVisitor();
    return gate;
}

} // namespace vellmoor
