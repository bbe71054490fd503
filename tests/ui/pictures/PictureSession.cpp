#include "PictureSession.h"

#include "SampleData.h"

namespace vellmoor {

std::filesystem::path PictureFrame::file(const std::string& name) const {
    return folder / (name + "-" + std::string(rawValue(language)) + ".png");
}

PictureSession::PictureSession(const PictureFrame& frame, bool asRoot)
    : frame_(frame),
      service_(std::make_shared<ScriptedCleanerService>()) {
    desktop_.asRoot = asRoot;
    desktop_.remember(themeSetting, frame.theme.toStdString());
    desktop_.setLook({.highContrast = frame.highContrast, .reducedMotion = true, .textScale = frame.textScale});
    L::setLanguage(frame.language); // the script is in the window's language
    service_->onScan(
        [](CleanerModule module, const ProgressCallback&, const CancelToken&) { return sample::snapshot(module); });
    service_->setHints(sample::grantedHints());
    driver_ = std::make_unique<WindowDriver>(service_, desktop_, frame.language);
    driver_->resize(frame.size);
    driver_->main().model().activated();
}

bool PictureSession::take(const std::string& name) {
    return driver_->take(frame_.file(name));
}

bool PictureSession::takeAfterClick(const std::string& objectName, const std::string& name) {
    return click(objectName) && take(name);
}

bool PictureSession::click(const std::string& objectName) {
    return driver_->click(QString::fromStdString(objectName));
}

void PictureSession::showScanned(CleanerModule module) {
    driver_->show(module);
    driver_->scan();
}

void PictureSession::clean(const CleanupReport& report) {
    service_->onClean([report](const std::vector<CleanupItem>&) { return report; });
    driver_->main().model().cleanSelected();
    waitUntilIdle();
}

void PictureSession::waitUntilIdle() {
    driver_->waitFor([this] { return !driver_->store().isCleaning() && !driver_->store().isScanning(); });
}

} // namespace vellmoor
