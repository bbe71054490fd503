#pragma once

#include "Desktop.h"
#include "KnownSymbols.h"

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor {

/// A desktop that does nothing but remember what it was asked for.
class RecordingDesktop final : public Desktop {
public:
    void reveal(const std::filesystem::path& path) override { revealed.push_back(path); }
    void openFolder(const std::filesystem::path& folder) override { folders.push_back(folder); }
    void openHome() override { asked.emplace_back("home"); }
    void openTrash() override { asked.emplace_back("trash"); }
    void openSystemMonitor() override { asked.emplace_back("monitor"); }
    void openLoginItemsSettings() override { asked.emplace_back("loginItems"); }
    void openPermissionSettings() override { asked.emplace_back("permissions"); }
    [[nodiscard]] const FileKinds& fileKinds() const override { return FileKinds::linuxDesktop(); }
    [[nodiscard]] std::string volumeLabel() const override { return label; }
    [[nodiscard]] std::filesystem::path homeFolder() const override { return home; }
    [[nodiscard]] QImage applicationIcon(const std::filesystem::path&, int) override { return {}; }
    [[nodiscard]] QImage symbol(const QString& name, int pixels) override { return systemSymbol(name, pixels); }
    [[nodiscard]] DesktopLook look() const override { return look_; }
    [[nodiscard]] std::optional<std::string> remembered(std::string_view name) const override {
        const auto found = memory.find(name);
        return found == memory.end() ? std::nullopt : std::optional(found->second);
    }
    void remember(std::string_view name, const std::string& value) override { memory[std::string(name)] = value; }
    void notify(const QString& /*title*/, const QString& text, std::function<void()> /*opened*/) override {
        notes.push_back(text);
    }
    /// The desktop's look is another from now on.
    void setLook(const DesktopLook& look) {
        look_ = look;
        tellLookChanged();
    }
    void fail(std::string_view key) const { tellFailure(key); }
    [[nodiscard]] bool runsAsRoot() const override { return asRoot; }

    std::vector<std::filesystem::path> revealed;
    std::vector<std::filesystem::path> folders;
    std::vector<std::string> asked;
    std::vector<QString> notes;
    std::map<std::string, std::string, std::less<>> memory;
    std::string label = "系统磁盘";
    std::filesystem::path home = "/home/anna";
    bool asRoot = false;

private:
    DesktopLook look_{.reducedMotion = true};
};

} // namespace vellmoor
