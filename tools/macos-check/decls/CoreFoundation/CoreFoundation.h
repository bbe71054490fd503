// What Vellmoor uses of CoreFoundation, and the macros that Apple's headers are written with.
#pragma once
#include <Availability.h>
#include <TargetConditionals.h>
#include <limits.h>
#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
#define CF_EXPORT extern "C"
#else
#define CF_EXPORT extern
#endif

typedef double CGFloat;
typedef const void* CFTypeRef;
typedef const struct __CFString* CFStringRef;
typedef const struct __CFBoolean* CFBooleanRef;

CF_EXPORT const CFBooleanRef kCFBooleanTrue;
