#pragma once

namespace vellmoor {

/// How the desktop wants programs to look.
struct DesktopLook {
    bool dark = false;
    bool highContrast = false;
    bool reducedMotion = false;
    /// What the desktop multiplies text sizes by, beyond the size of its interface font.
    double textScale = 1;
    /// The sizes of an interface font of which nobody says that they are small or large, in points.
    double smallestUsualPoints = 9;
    double largestUsualPoints = 11;

    bool operator==(const DesktopLook&) const = default;
};

} // namespace vellmoor
