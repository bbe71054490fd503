#include "LinuxDesktop.h"

#include "DesktopServices.h"
#include "FolderVariables.h"
#include "VolumeLabel.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QPixmap>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStandardPaths>
#include <QStringList>

#include <algorithm>
#include <functional>
#include <unistd.h>

namespace vellmoor {
namespace {

/// Asks the running (or installed) file manager; `otherwise` runs when there is none that can.
/// https://www.freedesktop.org/wiki/Specifications/file-manager-interface/
void askFileManager(const QString& method, const std::string& uri, std::function<void()> otherwise) {
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.FileManager1"),
                                                       QStringLiteral("/org/freedesktop/FileManager1"),
                                                       QStringLiteral("org.freedesktop.FileManager1"), method);
    call << QStringList{QString::fromStdString(uri)} << QString();
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

bool start(const DesktopCommand& tool) {
    const QString program = QStandardPaths::findExecutable(QString::fromStdString(tool.program));
    if (program.isEmpty()) {
        return launchDesktopEntry(tool.program);
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
    process.setProcessEnvironment(session);
    return process.startDetached();
}

} // namespace

LinuxDesktop::LinuxDesktop(const Platform& platform, const SystemLayout& layout, LinuxEnvironment environment)
    : platform_(platform),
      layout_(layout),
      environment_(std::move(environment)),
      volumeLabel_(volumeLabelOf(environment_.home, layout.root).value_or(layout.volumeLabel)) {}

void LinuxDesktop::reveal(const std::filesystem::path& path) {
    askFileManager(QStringLiteral("ShowItems"), fileUri(path),
                   [folder = path.parent_path()] { launchUri(fileUri(folder)); });
}

void LinuxDesktop::openHome() {
    launchUri(fileUri(environment_.home));
}

void LinuxDesktop::openTrash() {
    const std::string trash = "trash:///";
    if (launchUri(trash)) {
        return;
    }
    askFileManager(QStringLiteral("ShowFolders"), trash,
                   [files = layout_.trash.homeFolder / layout_.trash.contents] { launchUri(fileUri(files)); });
}

void LinuxDesktop::openSystemMonitor() {
    std::ranges::any_of(systemMonitors(environment_.desktops), launchDesktopEntry);
}

void LinuxDesktop::openLoginItemsSettings() {
    if (!std::ranges::any_of(loginItemsSettings(environment_.desktops), start)) {
        launchUri(fileUri(environment_.config / "autostart"));
    }
}

void LinuxDesktop::openPermissionSettings() {
    if (std::ranges::any_of(confinementSettings(confinement()), start)) {
        return;
    }
    const std::string folder = fileUri(firstUnreadableFolder());
    askFileManager(QStringLiteral("ShowItemProperties"), folder,
                   [folder] { askFileManager(QStringLiteral("ShowItems"), folder, [] {}); });
}

Confinement LinuxDesktop::confinement() const {
    if (platform_.exists(layout_.root / ".flatpak-info")) {
        return Confinement::Flatpak;
    }
    return qEnvironmentVariableIsSet("SNAP") ? Confinement::Snap : Confinement::None;
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

bool LinuxDesktop::prefersReducedMotion() const {
    return !desktopAnimates();
}

bool LinuxDesktop::runsAsRoot() const {
    return ::geteuid() == 0;
}

} // namespace vellmoor
