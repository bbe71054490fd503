#pragma once

#include "Desktop.h"
#include "KnownSymbols.h"

#include <filesystem>
#include <string>
#include <vector>

namespace vellmoor {

/// A desktop that does nothing but remember what it was asked for.
class RecordingDesktop final : public Desktop {
public:
    void reveal(const std::filesystem::path& path) override { revealed.push_back(path); }
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
    [[nodiscard]] bool prefersReducedMotion() const override { return true; }
    [[nodiscard]] bool runsAsRoot() const override { return asRoot; }

    std::vector<std::filesystem::path> revealed;
    std::vector<std::string> asked;
    std::string label = "系统磁盘";
    std::filesystem::path home = "/home/anna";
    bool asRoot = false;
};

} // namespace vellmoor
