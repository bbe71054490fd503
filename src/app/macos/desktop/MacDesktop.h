#pragma once

#include "Desktop.h"
#include "Platform.h"
#include "desktop/Shell.h"
#include "desktop/Workspace.h"
#include "layouts/SystemLayout.h"

#include <QObject>

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

namespace vellmoor {

/// As Qt has it; null for an empty picture.
QImage imageOf(const Picture& picture);

/// The Mac's desktop: Finder, System Settings, Activity Monitor, icons and symbols. What it is given must outlive it.
class MacDesktop final : public Desktop {
public:
    MacDesktop(const Platform& platform, const SystemLayout& layout, Workspace& workspace, Shell& shell);

    void reveal(const std::filesystem::path& path) override;
    void openFolder(const std::filesystem::path& folder) override;
    void openHome() override;
    void openTrash() override;
    void openSystemMonitor() override;
    void openLoginItemsSettings() override;
    void openPermissionSettings() override;
    /// A click shows the main window, as one on the Dock icon does: that which asked may have been closed by then, so
    /// `opened` is not called.
    void notify(const QString& title, const QString& text, std::function<void()> opened) override;
    [[nodiscard]] const FileKinds& fileKinds() const override { return FileKinds::common(); }
    [[nodiscard]] std::string volumeLabel() const override { return layout_.volumeLabel; }
    [[nodiscard]] std::filesystem::path homeFolder() const override { return layout_.home; }
    [[nodiscard]] QImage applicationIcon(const std::filesystem::path& application, int pixels) override;
    [[nodiscard]] bool hasApplicationIcon(const std::filesystem::path& application) override;
    [[nodiscard]] bool drawsOnAnyThread() const override { return true; }
    [[nodiscard]] QImage symbol(const QString& name, int pixels) override;
    /// Dark when the palette is, which Qt keeps as the effective appearance has it.
    [[nodiscard]] DesktopLook look() const override;
    [[nodiscard]] std::optional<std::string> remembered(std::string_view name) const override;
    void remember(std::string_view name, const std::string& value) override;

private:
    const Platform& platform_;
    const SystemLayout& layout_;
    Workspace& workspace_;
    Shell& shell_;
    std::unique_ptr<QObject> paletteWatcher_;
    std::mutex lock_;                                               ///< of pictures, which are drawn one at a time
    std::map<std::pair<std::filesystem::path, int>, QImage> icons_; ///< of applications asked for so far
};

} // namespace vellmoor
