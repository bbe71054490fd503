#pragma once

#include "Desktop.h"
#include "DesktopTools.h"
#include "Platform.h"
#include "layouts/LinuxEnvironment.h"
#include "layouts/SystemLayout.h"

#include <QIcon>

#include <map>
#include <vector>

namespace vellmoor {

/// The freedesktop.org desktop that the program runs in. What it is given must outlive it.
class LinuxDesktop final : public Desktop {
public:
    LinuxDesktop(const Platform& platform, const SystemLayout& layout, LinuxEnvironment environment);

    void reveal(const std::filesystem::path& path) override;
    void openHome() override;
    void openTrash() override;
    void openSystemMonitor() override;
    void openLoginItemsSettings() override;
    void openPermissionSettings() override;
    [[nodiscard]] const FileKinds& fileKinds() const override { return FileKinds::linuxDesktop(); }
    [[nodiscard]] std::string volumeLabel() const override { return volumeLabel_; }
    [[nodiscard]] std::filesystem::path homeFolder() const override { return environment_.home; }
    [[nodiscard]] QImage applicationIcon(const std::filesystem::path& application, int pixels) override;
    [[nodiscard]] bool prefersReducedMotion() const override;
    [[nodiscard]] bool runsAsRoot() const override;

private:
    [[nodiscard]] QIcon iconOf(const std::filesystem::path& application) const;
    [[nodiscard]] Confinement confinement() const;
    [[nodiscard]] std::filesystem::path firstUnreadableFolder() const;

    const Platform& platform_;
    const SystemLayout& layout_;
    LinuxEnvironment environment_;
    std::string volumeLabel_;
    std::map<std::filesystem::path, QIcon> icons_; ///< of applications asked for so far
};

} // namespace vellmoor
