// What the window needs of macOS's workspace, without any of its types, so that the rules above it can be tested
// anywhere. Main thread only, but for fileIcon() and symbol(), which any thread may call, one at a time.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vellmoor {

/// Where a picture of some size stands in a square: in the middle, and made smaller where it must be.
struct Placement {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};
/// Nothing when either has no size.
std::optional<Placement> placedInSquare(double width, double height, int side);

/// Rows from the top, four bytes a pixel: red, green, blue, alpha, the colours multiplied by it. Empty: no picture.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> bytes;
};

class Workspace {
public:
    Workspace() = default;
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;
    virtual ~Workspace() = default;

    /// Whether something took the address.
    virtual bool openAddress(const std::string& address) = 0;
    /// A folder in Finder, an application by starting it; whether that was done.
    virtual bool openFile(const std::filesystem::path& path) = 0;
    /// Shows a path, selected, in Finder.
    virtual void reveal(const std::filesystem::path& path) = 0;
    /// Finder's icon of a file, `pixels` wide and high. A missing file has a general one: ask first.
    [[nodiscard]] virtual Picture fileIcon(const std::filesystem::path& path, int pixels) = 0;
    /// A symbol of the system in black, inside `pixels` by `pixels`; empty for an unknown name.
    [[nodiscard]] virtual Picture symbol(const std::string& name, int pixels) = 0;
    [[nodiscard]] virtual bool reducesMotion() const = 0;
    [[nodiscard]] virtual bool increasesContrast() const = 0;
};

} // namespace vellmoor
