#include "WindowFixture.h"

#include <QDebug>

#include <mutex>
#include <vector>

namespace vellmoor {
namespace {

struct Messages {
    std::mutex lock;
    std::vector<std::string> lines;
};

Messages& messages() {
    static Messages kept;
    return kept;
}

void keepWarning(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type != QtDebugMsg && type != QtInfoMsg) {
        const std::scoped_lock guard(messages().lock);
        messages().lines.push_back(text.toStdString());
    }
}

} // namespace

void WindowTest::SetUp() {
    L::setTextSet(TextSet::Linux);
    L::setLanguage(GetParam());
    messages().lines.clear();
    qInstallMessageHandler(keepWarning);
    service_->onScan(
        [](CleanerModule module, const ProgressCallback&, const CancelToken&) { return sample::snapshot(module); });
}

void WindowTest::TearDown() {
    driver_.reset();
    qInstallMessageHandler(nullptr);
    EXPECT_THAT(messages().lines, ::testing::IsEmpty());
}

void WindowTest::open() {
    driver_ = std::make_unique<WindowDriver>(service_, desktop_, GetParam());
    ASSERT_TRUE(driver_->isReady());
    driver_->main().model().activated();
    driver_->settle();
}

void WindowTest::openScanned(CleanerModule module) {
    open();
    driver_->show(module);
    driver_->scan();
    driver_->settle();
}

void WindowTest::askClean() {
    ASSERT_TRUE(window().click(QStringLiteral("cleanButton")));
    if (window().main().model().offer()->previewsClean()) {
        ASSERT_TRUE(window().click(QStringLiteral("details.clean")));
    }
}

void WindowTest::cleanConfirmed() {
    askClean();
    ASSERT_TRUE(window().click(QStringLiteral("confirm.accept")));
    waitUntilIdle();
}

void WindowTest::waitUntilIdle() {
    ASSERT_TRUE(window().waitFor([this] { return !store().isCleaning() && !store().isScanning(); }));
    window().settle();
}

bool WindowTest::isVisible(const char* objectName) {
    return window().item(QString::fromUtf8(objectName)) != nullptr;
}

QString WindowTest::text(const char* objectName) {
    return window().text(QString::fromUtf8(objectName));
}

QString WindowTest::tr(const char* key) const {
    return QString::fromStdString(L::tr(key));
}

bool WindowTest::isTicked(const char* objectName) {
    const QQuickItem* item = window().item(QString::fromUtf8(objectName));
    return item != nullptr && item->property("ticked").toBool();
}

bool WindowTest::isEnabled(const char* objectName) {
    const QQuickItem* item = window().item(QString::fromUtf8(objectName));
    return item != nullptr && item->isEnabled();
}

} // namespace vellmoor
