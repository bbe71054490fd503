#include "desktop/MacDesktop.h"

#include "desktop/SystemPlaces.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>
#include <QSettings>
#include <QString>

#include <algorithm>
#include <functional>
#include <string_view>
#include <utility>

namespace vellmoor {
namespace {

bool openFirst(Workspace& workspace, const std::vector<std::string_view>& addresses) {
    return std::ranges::any_of(addresses,
                               [&](std::string_view address) { return workspace.openAddress(std::string(address)); });
}

/// The first that exists; whether it could be started.
bool startFirst(const Platform& platform, Workspace& workspace, const std::vector<std::filesystem::path>& places) {
    const auto place = std::ranges::find_if(places, [&](const auto& path) { return platform.exists(path); });
    return place != places.end() && workspace.openFile(*place);
}

/// Hears of it when Qt's palette has followed the system to another appearance.
class PaletteWatcher final : public QObject {
public:
    explicit PaletteWatcher(std::function<void()> changed) : changed_(std::move(changed)) {
        qGuiApp->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == qGuiApp && event->type() == QEvent::ApplicationPaletteChange) {
            changed_();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void()> changed_;
};

} // namespace

QImage imageOf(const Picture& picture) {
    if (picture.bytes.empty()) {
        return {};
    }
    // A copy, since the image would otherwise read the picture's own bytes.
    return QImage(picture.bytes.data(), picture.width, picture.height, qsizetype{picture.width} * 4,
                  QImage::Format_RGBA8888_Premultiplied)
        .copy();
}

MacDesktop::MacDesktop(const Platform& platform, const SystemLayout& layout, Workspace& workspace, Shell& shell)
    : platform_(platform),
      layout_(layout),
      workspace_(workspace),
      shell_(shell),
      paletteWatcher_(std::make_unique<PaletteWatcher>([this] { tellLookChanged(); })) {}

DesktopLook MacDesktop::look() const {
    constexpr int halfLight = 128;
    constexpr double systemPoints = 13; // the system's font has this size on every Mac
    return {.dark = QGuiApplication::palette().color(QPalette::Window).lightness() < halfLight,
            .highContrast = workspace_.increasesContrast(),
            .reducedMotion = workspace_.reducesMotion(),
            .smallestUsualPoints = systemPoints,
            .largestUsualPoints = systemPoints};
}

std::optional<std::string> MacDesktop::remembered(std::string_view name) const {
    const QSettings settings;
    const QString key = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
    return settings.contains(key) ? std::optional(settings.value(key).toString().toStdString()) : std::nullopt;
}

void MacDesktop::remember(std::string_view name, const std::string& value) {
    QSettings().setValue(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())),
                         QString::fromStdString(value));
}

void MacDesktop::notify(const QString& title, const QString& text, std::function<void()> /*opened*/) {
    shell_.showNote(title.toStdString(), text.toStdString());
}

void MacDesktop::openFolder(const std::filesystem::path& folder) {
    if (!workspace_.openFile(folder)) {
        tellFailure("文件管理器没有打开。");
    }
}

void MacDesktop::reveal(const std::filesystem::path& path) {
    workspace_.reveal(path);
}

void MacDesktop::openHome() {
    workspace_.openFile(layout_.home);
}

void MacDesktop::openTrash() {
    workspace_.openFile(layout_.trash.homeFolder);
}

void MacDesktop::openSystemMonitor() {
    startFirst(platform_, workspace_, activityMonitorPlaces());
}

void MacDesktop::openLoginItemsSettings() {
    if (!openFirst(workspace_, loginItemsAddresses())) {
        startFirst(platform_, workspace_, systemSettingsPlaces());
    }
}

void MacDesktop::openPermissionSettings() {
    if (!openFirst(workspace_, fullDiskAccessAddresses())) {
        startFirst(platform_, workspace_, systemSettingsPlaces());
    }
}

QImage MacDesktop::applicationIcon(const std::filesystem::path& application, int pixels) {
    const std::scoped_lock guard(lock_);
    const auto [known, isNew] = icons_.try_emplace({application, pixels});
    if (isNew && platform_.exists(application)) {
        known->second = imageOf(workspace_.fileIcon(application, pixels));
    }
    return known->second;
}

// A file that is there always has one; a missing one would have the general icon.
bool MacDesktop::hasApplicationIcon(const std::filesystem::path& application) {
    return platform_.exists(application);
}

QImage MacDesktop::symbol(const QString& name, int pixels) {
    const std::scoped_lock guard(lock_);
    return imageOf(workspace_.symbol(name.toStdString(), pixels));
}

} // namespace vellmoor
