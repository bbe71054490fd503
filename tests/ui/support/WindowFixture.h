#pragma once

#include "RecordingDesktop.h"
#include "SampleData.h"
#include "ScriptedCleanerService.h"
#include "WindowDriver.h"

#include <QString>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <ostream>

namespace vellmoor {

inline void PrintTo(AppLanguage language, std::ostream* out) {
    *out << rawValue(language);
}

/// The real window over scripted results, once per language. A warning of any kind fails the test.
class WindowTest : public ::testing::TestWithParam<AppLanguage> {
protected:
    void SetUp() override;
    void TearDown() override;

    /// Makes the window; before it, the script can be changed.
    void open();
    [[nodiscard]] WindowDriver& window() { return *driver_; }
    [[nodiscard]] CleanerStore& store() { return driver_->store(); }
    [[nodiscard]] ScriptedCleanerService& service() { return *service_; }
    [[nodiscard]] RecordingDesktop& desktop() { return desktop_; }
    /// Opens the page of `module` and scans it to the end.
    void openScanned(CleanerModule module);
    /// Goes to the question before a clean: over the sheet of its paths, where that comes first.
    void askClean();
    /// Confirms a clean of the selection and waits for its report and the scan after it.
    void cleanConfirmed();
    void waitUntilIdle();
    [[nodiscard]] bool isVisible(const char* objectName);
    [[nodiscard]] QString text(const char* objectName);
    [[nodiscard]] QString tr(const char* key) const;
    template <class Argument>
    [[nodiscard]] QString tr(const char* key, Argument argument) const {
        return QString::fromStdString(L::tr(key, argument));
    }
    /// Whether an item is checked (Accessible.checked of a tick).
    [[nodiscard]] bool isTicked(const char* objectName);
    [[nodiscard]] bool isEnabled(const char* objectName);

private:
    RecordingDesktop desktop_;
    std::shared_ptr<ScriptedCleanerService> service_ = std::make_shared<ScriptedCleanerService>();
    std::unique_ptr<WindowDriver> driver_;
};

/// gtest's name of a language.
inline std::string languageName(const ::testing::TestParamInfo<AppLanguage>& info) {
    return info.param == AppLanguage::chinese ? "Chinese" : "English";
}

} // namespace vellmoor

#define INSTANTIATE_IN_BOTH_LANGUAGES(Fixture)                                                                         \
    INSTANTIATE_TEST_SUITE_P(Languages, Fixture, ::testing::ValuesIn(allAppLanguages), languageName)
