#pragma once

#include "desktop/Workspace.h"

namespace vellmoor {

/// The workspace of this Mac.
class AppKitWorkspace final : public Workspace {
public:
    bool openAddress(const std::string& address) override;
    bool openFile(const std::filesystem::path& path) override;
    void reveal(const std::filesystem::path& path) override;
    [[nodiscard]] Picture fileIcon(const std::filesystem::path& path, int pixels) override;
    [[nodiscard]] Picture symbol(const std::string& name, int pixels) override;
    [[nodiscard]] bool reducesMotion() const override;
    [[nodiscard]] bool increasesContrast() const override;
};

} // namespace vellmoor
