#pragma once

#include "CleanerStore.h"
#include "Desktop.h"
#include "LanguageManager.h"
#include "LinuxPlatform.h"
#include "MainWindow.h"
#include "SystemLayout.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QString>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vellmoor::journey {

namespace fs = std::filesystem;

/// The throw-away home of this process: $HOME, below the temporary folder, made in main() before anything reads it.
const fs::path& home();

/// A desktop that notes what it was asked for.
class RecordingDesktop final : public Desktop {
public:
    explicit RecordingDesktop(const SystemLayout& layout) : layout_(layout) {}
    std::vector<std::string> asked;

    void reveal(const fs::path& path) override { asked.push_back("reveal " + path.string()); }
    void openHome() override { asked.emplace_back("home"); }
    void openTrash() override { asked.emplace_back("trash"); }
    void openSystemMonitor() override { asked.emplace_back("monitor"); }
    void openLoginItemsSettings() override { asked.emplace_back("login items"); }
    void openPermissionSettings() override { asked.emplace_back("permissions"); }
    [[nodiscard]] const FileKinds& fileKinds() const override { return *layout_.fileKinds; }
    [[nodiscard]] std::string volumeLabel() const override { return layout_.volumeLabel; }
    [[nodiscard]] fs::path homeFolder() const override { return layout_.home; }
    [[nodiscard]] QImage applicationIcon(const fs::path&, int) override { return {}; }
    [[nodiscard]] bool prefersReducedMotion() const override { return true; }

private:
    const SystemLayout& layout_;
};

/// The program as its user has it: the window on the screen, hands on mouse and keyboard, eyes on the disk.
class Journey : public ::testing::Test {
protected:
    Journey();
    ~Journey() override;

    /// Opens the window over whatever the home holds by now.
    void open();

    // Hands
    void click(const QString& name);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Shows a module and waits until its page stands.
    void show(CleanerModule module);
    /// Presses the scan button of the shown module and waits for the end of the scan.
    void scan();

    // Eyes
    [[nodiscard]] QQuickItem* find(const QString& name) const;
    [[nodiscard]] bool isShown(const QString& name) const;
    [[nodiscard]] QString textOf(const QString& name) const;
    /// Lets the event loop run until `condition` holds; fails after a generous limit.
    void waitFor(const char* what, const std::function<bool()>& condition) const;

    /// Position of a row of the shown module's list by title, -1 when it is not there.
    [[nodiscard]] int listed(const std::string& title) const;
    /// Position of a path in that row.
    [[nodiscard]] int listed(const std::string& title, const std::string& target) const;

    // The home
    static fs::path file(const fs::path& relative, std::size_t bytes, int daysOld = 0);
    static fs::path text(const fs::path& relative, const std::string& contents);
    [[nodiscard]] static bool has(const fs::path& relative);
    /// Runs a command to its end and answers its exit status; its output goes to `output`.
    static int run(const std::string& command, std::string* output = nullptr);

    LinuxPlatform platform;
    SystemLayout layout;
    RecordingDesktop desktop;
    std::shared_ptr<CleanerService> service;
    std::unique_ptr<CleanerStore> store;
    std::unique_ptr<LanguageManager> languages;
    std::unique_ptr<QQmlEngine> engine;
    std::unique_ptr<MainWindow> window;
};

} // namespace vellmoor::journey
