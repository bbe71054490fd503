// The icon file of macOS: a container of the same picture in several sizes.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace vellmoor::icon {

/// One member of the family: its type in the container and how many pixels wide and high its picture is.
struct Member {
    const char* type;
    int pixels;
};

/// The members that a program's bundle needs, each of which may be a PNG. The types of 16 and 32 pixels for screens
/// without double density are left out: as PNG they are not drawn in a bundle, and the system shrinks a larger one.
std::span<const Member> members();

/// The whole file; `png` answers the bytes of the picture of that size.
std::string iconFamily(const std::function<std::string(int pixels)>& png);

} // namespace vellmoor::icon
