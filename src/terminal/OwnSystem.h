#pragma once

#include "Platform.h"
#include "layouts/SystemLayout.h"
#include "texts/L.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace vellmoor::terminal {

/// The system that the program runs on, and its layout.
struct OwnSystem {
    std::unique_ptr<Platform> platform;
    SystemLayout layout;
};

/// The user's home folder: on Linux that of the environment, on macOS that of the account.
std::filesystem::path userHome();

/// To be called before anything else reads the environment. `home`: another one than the user's, with the default
/// folders below it; `root` stands for "/" in every path outside the home.
OwnSystem openOwnSystem(const std::optional<std::filesystem::path>& home = {}, const std::filesystem::path& root = "/");

/// The texts of the layout's system, in `language`, else in that of the user.
void chooseTexts(const Platform& platform, const SystemLayout& layout, std::optional<AppLanguage> language);

} // namespace vellmoor::terminal
