#pragma once

#include "Desktop.h"
#include "Platform.h"
#include "desktop/DesktopNotes.h"
#include "desktop/DesktopTools.h"
#include "desktop/UserTime.h"
#include "layouts/SystemLayout.h"
#include "layouts/linux/LinuxEnvironment.h"
#include "look/LookWatcher.h"

#include <QIcon>
#include <QObject>

#include <map>
#include <vector>

namespace vellmoor {

/// In the program's own settings; nothing when it was never remembered.
std::optional<std::string> rememberedSetting(std::string_view name);

/// The freedesktop.org desktop that the program runs in. What it is given must outlive it.
class LinuxDesktop final : public Desktop {
public:
    LinuxDesktop(const Platform& platform, const SystemLayout& layout, LinuxEnvironment environment,
                 const LookWatcher& looks);

    void reveal(const std::filesystem::path& path) override;
    void openFolder(const std::filesystem::path& folder) override;
    void openHome() override;
    void openTrash() override;
    void openSystemMonitor() override;
    void openLoginItemsSettings() override;
    void openPermissionSettings() override;
    void notify(const QString& title, const QString& text, std::function<void()> opened) override;
    [[nodiscard]] const FileKinds& fileKinds() const override { return FileKinds::linuxDesktop(); }
    [[nodiscard]] std::string volumeLabel() const override { return volumeLabel_; }
    [[nodiscard]] std::filesystem::path homeFolder() const override { return environment_.home; }
    [[nodiscard]] QImage applicationIcon(const std::filesystem::path& application, int pixels) override;
    [[nodiscard]] DesktopLook look() const override;
    [[nodiscard]] std::optional<std::string> remembered(std::string_view name) const override;
    void remember(std::string_view name, const std::string& value) override;
    [[nodiscard]] bool runsAsRoot() const override;

private:
    void openPlace(const std::filesystem::path& place);
    [[nodiscard]] QIcon iconOf(const std::filesystem::path& application) const;
    [[nodiscard]] Confinement confinement() const;
    [[nodiscard]] std::filesystem::path firstUnreadableFolder() const;

    const Platform& platform_;
    const SystemLayout& layout_;
    LinuxEnvironment environment_;
    const LookWatcher& looks_;
    std::string volumeLabel_;
    QObject lookConnection_;
    UserTime userTime_;
    DesktopNotes notes_{QDBusConnection::sessionBus()};
    std::map<std::filesystem::path, QIcon> icons_; ///< of applications asked for so far
};

} // namespace vellmoor
