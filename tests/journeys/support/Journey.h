#pragma once

#include "CleanerStore.h"
#include "Desktop.h"
#include "HeldService.h"
#include "LanguageManager.h"
#include "LinuxPlatform.h"
#include "MainWindow.h"
#include "ThrowAwayHome.h"
#include "layouts/SystemLayout.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QString>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace vellmoor {

inline void PrintTo(AppLanguage language, std::ostream* out) {
    *out << rawValue(language);
}

} // namespace vellmoor

namespace vellmoor::journey {

/// A desktop that notes what it was asked for.
class RecordingDesktop final : public Desktop {
public:
    explicit RecordingDesktop(const SystemLayout& layout) : layout_(layout) {}
    std::vector<std::string> asked;
    bool asRoot = false;

    void reveal(const fs::path& path) override { asked.push_back("reveal " + path.string()); }
    void openFolder(const fs::path& folder) override { asked.push_back("folder " + folder.string()); }
    void openHome() override { asked.emplace_back("home"); }
    void openTrash() override { asked.emplace_back("trash"); }
    void openSystemMonitor() override { asked.emplace_back("monitor"); }
    void openLoginItemsSettings() override { asked.emplace_back("login items"); }
    void openPermissionSettings() override { asked.emplace_back("permissions"); }
    [[nodiscard]] const FileKinds& fileKinds() const override { return *layout_.fileKinds; }
    [[nodiscard]] std::string volumeLabel() const override { return layout_.volumeLabel; }
    [[nodiscard]] fs::path homeFolder() const override { return layout_.home; }
    [[nodiscard]] QImage applicationIcon(const fs::path&, int) override { return {}; }
    [[nodiscard]] DesktopLook look() const override { return look_; }
    /// The desktop's look is another from now on.
    void setLook(const DesktopLook& look) {
        look_ = look;
        tellLookChanged();
    }
    [[nodiscard]] bool runsAsRoot() const override { return asRoot; }

private:
    const SystemLayout& layout_;
    DesktopLook look_{.reducedMotion = true};
};

/// The program as its user has it: the window on the screen, hands on mouse and keyboard, eyes on the disk.
class Journey : public ::testing::Test {
protected:
    explicit Journey(AppLanguage language = AppLanguage::english);
    ~Journey() override;

    /// Opens the window over whatever the home holds by now.
    void open(QSize size = {1080, 720});

    // Hands
    /// A click in the middle of the item of that name, below the one called `within` when that is given; scrolls it
    /// into view first.
    void click(const QString& name, const QString& within = {});
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Lets layouts and lists find their places.
    void settle();
    /// Shows a module and waits until its page stands.
    void show(CleanerModule module);
    /// Presses the scan button of the shown module and waits for the end of the scan.
    void scan();
    /// Goes to the question before a clean.
    void askClean();
    /// Presses the main button, confirms, and waits for the report and for the scan after it.
    void clean();
    void waitForReport();

    // Eyes
    [[nodiscard]] QQuickItem* find(const QString& name, const QString& within = {}) const;
    [[nodiscard]] bool isShown(const QString& name, const QString& within = {}) const;
    [[nodiscard]] bool isTicked(const QString& name, const QString& within = {}) const;
    [[nodiscard]] QString textOf(const QString& name) const;
    /// The value of a tile or a pill.
    [[nodiscard]] QString valueOf(const QString& name) const;
    /// Lets the event loop run until `condition` holds; fails after a generous limit.
    void waitFor(const char* what, const std::function<bool()>& condition) const;

    /// Position of a row of the shown module's list by title, -1 when it is not there.
    [[nodiscard]] int listed(const std::string& title) const;
    /// Position of a path in that row.
    [[nodiscard]] int listed(const std::string& title, const std::string& target) const;
    /// The object names of that row and of that path's row in the shown module's unfiltered list.
    [[nodiscard]] QString row(const std::string& title) const;
    [[nodiscard]] QString row(const std::string& title, const std::string& target) const;
    [[nodiscard]] const CleanupItem* item(const std::string& title) const;

    static QString text(const std::string& utf8) { return QString::fromStdString(utf8); }
    template <class... Arguments>
    static QString tr(const char* key, Arguments&&... arguments) {
        return text(L::tr(key, std::forward<Arguments>(arguments)...));
    }

    LinuxPlatform platform;
    SystemLayout layout;
    RecordingDesktop desktop;
    std::shared_ptr<HeldService> service;
    std::unique_ptr<CleanerStore> store;
    std::unique_ptr<LanguageManager> languages;
    std::unique_ptr<QQmlEngine> engine;
    std::unique_ptr<MainWindow> window;
};

/// A journey in either language.
class JourneyInEachLanguage : public Journey, public ::testing::WithParamInterface<AppLanguage> {
protected:
    JourneyInEachLanguage() : Journey(GetParam()) {}
};

inline std::string languageName(const ::testing::TestParamInfo<AppLanguage>& info) {
    return info.param == AppLanguage::chinese ? "Chinese" : "English";
}

} // namespace vellmoor::journey

#define IN_BOTH_LANGUAGES(Fixture)                                                                                     \
    INSTANTIATE_TEST_SUITE_P(Languages, Fixture, ::testing::ValuesIn(allAppLanguages), languageName)
