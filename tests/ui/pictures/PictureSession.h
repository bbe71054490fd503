#pragma once

#include "RecordingDesktop.h"
#include "ScriptedCleanerService.h"
#include "WindowDriver.h"

#include <QSize>

#include <filesystem>
#include <memory>
#include <string>

namespace vellmoor {

/// Where pictures go, and what they show the window in.
struct PictureFrame {
    std::filesystem::path folder;
    AppLanguage language = AppLanguage::english;
    QSize size; ///< of the window, in device-independent pixels
    QString theme = QStringLiteral("light");
    double textScale = 1;
    bool highContrast = false;

    /// FOLDER/NAME-LANGUAGE.png
    [[nodiscard]] std::filesystem::path file(const std::string& name) const;
};

/// A window over scripted results, and the pictures of it.
class PictureSession {
public:
    explicit PictureSession(const PictureFrame& frame, bool asRoot = false);

    [[nodiscard]] ScriptedCleanerService& service() { return *service_; }
    [[nodiscard]] WindowDriver& driver() { return *driver_; }
    [[nodiscard]] WindowModel& model() { return driver_->main().model(); }

    /// Writes the window as it is now; false when it could not.
    bool take(const std::string& name);
    /// Clicks what is called `objectName`, then writes the window.
    bool takeAfterClick(const std::string& objectName, const std::string& name);
    bool click(const std::string& objectName);
    void showScanned(CleanerModule module);
    /// Cleans what is selected, with `report` as the outcome.
    void clean(const CleanupReport& report);
    /// Waits until neither a scan nor a clean runs.
    void waitUntilIdle();

private:
    PictureFrame frame_;
    RecordingDesktop desktop_;
    std::shared_ptr<ScriptedCleanerService> service_;
    std::unique_ptr<WindowDriver> driver_;
};

} // namespace vellmoor
