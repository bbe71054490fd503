#pragma once

#include "Desktop.h"
#include "Platform.h"
#include "Workspace.h"
#include "layouts/SystemLayout.h"

#include <map>
#include <mutex>
#include <utility>

namespace vellmoor {

/// As Qt has it; null for an empty picture.
QImage imageOf(const Picture& picture);

/// The Mac's desktop: Finder, System Settings, Activity Monitor, icons and symbols. What it is given must outlive it.
class MacDesktop final : public Desktop {
public:
    MacDesktop(const Platform& platform, const SystemLayout& layout, Workspace& workspace);

    void reveal(const std::filesystem::path& path) override;
    void openHome() override;
    void openTrash() override;
    void openSystemMonitor() override;
    void openLoginItemsSettings() override;
    void openPermissionSettings() override;
    [[nodiscard]] const FileKinds& fileKinds() const override { return FileKinds::common(); }
    [[nodiscard]] std::string volumeLabel() const override { return layout_.volumeLabel; }
    [[nodiscard]] std::filesystem::path homeFolder() const override { return layout_.home; }
    [[nodiscard]] QImage applicationIcon(const std::filesystem::path& application, int pixels) override;
    [[nodiscard]] bool hasApplicationIcon(const std::filesystem::path& application) override;
    [[nodiscard]] bool drawsOnAnyThread() const override { return true; }
    [[nodiscard]] QImage symbol(const QString& name, int pixels) override;
    [[nodiscard]] bool prefersReducedMotion() const override { return workspace_.reducesMotion(); }
    /// The system's font has this size on every Mac.
    [[nodiscard]] double usualTextPoints() const override { return 13; }

private:
    const Platform& platform_;
    const SystemLayout& layout_;
    Workspace& workspace_;
    std::mutex lock_;                                               ///< of the icons, which are drawn one at a time
    std::map<std::pair<std::filesystem::path, int>, QImage> icons_; ///< of applications asked for so far
};

} // namespace vellmoor
