// The few names of CoreFoundation that the declarations of CoreGraphics are written with.
#pragma once
#include <cstddef>
#include <cstdint>

#define CF_EXPORT extern "C"
using CFTypeRef = const void*;
using CFStringRef = const struct __CFString*;
