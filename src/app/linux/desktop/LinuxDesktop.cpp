#include "desktop/LinuxDesktop.h"

#include "desktop/DesktopServices.h"
#include "desktop/VolumeLabel.h"
#include "disk/FolderVariables.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QPixmap>
#include <QProcess>
#include <QProcessEnvironment>
#include <QSettings>
#include <QStandardPaths>
#include <QStringList>

#include <algorithm>
#include <functional>
#include <unistd.h>

namespace vellmoor {
namespace {

/// Asks the running (or installed) file manager; `otherwise` runs when there is none that can.
/// https://www.freedesktop.org/wiki/Specifications/file-manager-interface/
void askFileManager(const QString& method, const std::string& uri, const std::string& startupId,
                    std::function<void()> otherwise) {
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.FileManager1"),
                                                       QStringLiteral("/org/freedesktop/FileManager1"),
                                                       QStringLiteral("org.freedesktop.FileManager1"), method);
    call << QStringList{QString::fromStdString(uri)} << QString::fromStdString(startupId);
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [otherwise = std::move(otherwise)](QDBusPendingCallWatcher* finished) {
                         const QDBusPendingReply<> reply = *finished;
                         if (reply.isError()) {
                             otherwise();
                         }
                         finished->deleteLater();
                     });
}

bool start(const DesktopCommand& tool, const std::string& startupId) {
    const QString program = QStandardPaths::findExecutable(QString::fromStdString(tool.program));
    if (program.isEmpty()) {
        return launchDesktopEntry(tool.program, startupId);
    }
    QStringList arguments;
    for (const std::string& argument : tool.arguments) {
        arguments << QString::fromStdString(argument);
    }
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    QProcessEnvironment session = QProcessEnvironment::systemEnvironment();
    for (const auto& [name, value] : originalFolders()) {
        session.insert(QString::fromStdString(name), QString::fromStdString(value));
    }
    if (!startupId.empty()) {
        for (const char* name : startupVariables) {
            session.insert(QString::fromLatin1(name), QString::fromStdString(startupId));
        }
    }
    process.setProcessEnvironment(session);
    return process.startDetached();
}

QString settingKey(std::string_view name) {
    return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
}

} // namespace

std::optional<std::string> rememberedSetting(std::string_view name) {
    const QSettings settings;
    const QString key = settingKey(name);
    return settings.contains(key) ? std::optional(settings.value(key).toString().toStdString()) : std::nullopt;
}

LinuxDesktop::LinuxDesktop(const Platform& platform, const SystemLayout& layout, LinuxEnvironment environment,
                           const LookWatcher& looks)
    : platform_(platform),
      layout_(layout),
      environment_(std::move(environment)),
      looks_(looks),
      volumeLabel_(volumeLabelOf(environment_.home, layout.root).value_or(layout.volumeLabel)) {
    QObject::connect(&looks, &LookWatcher::changed, &lookConnection_, [this] { tellLookChanged(); });
}

void LinuxDesktop::reveal(const std::filesystem::path& path) {
    askFileManager(QStringLiteral("ShowItems"), fileUri(path), userTime_.startupId(),
                   [this, folder = path.parent_path()] { openPlace(folder); });
}

void LinuxDesktop::openPlace(const std::filesystem::path& place) {
    if (!launchUri(fileUri(place), userTime_.startupId())) {
        tellFailure("文件管理器没有打开。");
    }
}

void LinuxDesktop::openFolder(const std::filesystem::path& folder) {
    openPlace(folder);
}

void LinuxDesktop::openHome() {
    openPlace(environment_.home);
}

void LinuxDesktop::openTrash() {
    const std::string trash = "trash:///";
    if (launchUri(trash, userTime_.startupId())) {
        return;
    }
    askFileManager(QStringLiteral("ShowFolders"), trash, userTime_.startupId(),
                   [this, files = layout_.trash.homeFolder / layout_.trash.contents] { openPlace(files); });
}

void LinuxDesktop::openSystemMonitor() {
    const auto launches = [this](const std::string& monitor) {
        return launchDesktopEntry(monitor, userTime_.startupId());
    };
    if (!std::ranges::any_of(systemMonitors(environment_.desktops), launches)) {
        tellFailure("没有找到系统监视器。");
    }
}

void LinuxDesktop::openLoginItemsSettings() {
    const auto starts = [this](const DesktopCommand& tool) { return start(tool, userTime_.startupId()); };
    if (!std::ranges::any_of(loginItemsSettings(environment_.desktops), starts)) {
        openPlace(environment_.config / "autostart");
    }
}

void LinuxDesktop::openPermissionSettings() {
    const auto starts = [this](const DesktopCommand& tool) { return start(tool, userTime_.startupId()); };
    if (std::ranges::any_of(confinementSettings(confinement()), starts)) {
        return;
    }
    const std::string folder = fileUri(firstUnreadableFolder());
    askFileManager(QStringLiteral("ShowItemProperties"), folder, userTime_.startupId(), [this, folder] {
        askFileManager(QStringLiteral("ShowItems"), folder, userTime_.startupId(),
                       [this] { tellFailure("文件管理器没有打开。"); });
    });
}

Confinement LinuxDesktop::confinement() const {
    if (platform_.exists(layout_.root / ".flatpak-info")) {
        return Confinement::Flatpak;
    }
    return environment_.insideSnap ? Confinement::Snap : Confinement::None;
}

std::filesystem::path LinuxDesktop::firstUnreadableFolder() const {
    for (const ProtectedLocation& location : layout_.permissions.dataFolders) {
        for (const std::filesystem::path& folder : location.folders) {
            if (platform_.exists(folder) && !platform_.isReadable(folder)) {
                return folder;
            }
        }
    }
    return environment_.home;
}

QImage LinuxDesktop::applicationIcon(const std::filesystem::path& application, int pixels) {
    const auto [known, isNew] = icons_.try_emplace(application);
    if (isNew) {
        known->second = iconOf(application);
    }
    return known->second.isNull() ? QImage() : known->second.pixmap(QSize(pixels, pixels), 1.0).toImage();
}

QIcon LinuxDesktop::iconOf(const std::filesystem::path& application) const {
    // A Flatpak's folder bears its identifier, which is also its icon's name.
    std::string name = application.filename().string();
    if (application.extension() == ".desktop") {
        const auto entry = platform_.keyFile(application);
        const auto group = entry ? entry->find("Desktop Entry") : KeyFile::const_iterator();
        if (!entry || group == entry->end() || !group->second.contains("Icon")) {
            return {};
        }
        name = group->second.at("Icon");
    }
    return name.starts_with('/') ? QIcon(QString::fromStdString(name)) : QIcon::fromTheme(QString::fromStdString(name));
}

DesktopLook LinuxDesktop::look() const {
    DesktopLook look = looks_.look();
    look.reducedMotion = look.reducedMotion || !desktopAnimates();
    return look;
}

void LinuxDesktop::notify(const QString& title, const QString& text, std::function<void()> opened) {
    notes_.show(title, text, std::move(opened));
}

std::optional<std::string> LinuxDesktop::remembered(std::string_view name) const {
    return rememberedSetting(name);
}

void LinuxDesktop::remember(std::string_view name, const std::string& value) {
    QSettings().setValue(settingKey(name), QString::fromStdString(value));
}

bool LinuxDesktop::runsAsRoot() const {
    return ::geteuid() == 0;
}

} // namespace vellmoor
