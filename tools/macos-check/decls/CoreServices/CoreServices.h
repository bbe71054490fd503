// The Apple events that Vellmoor answers.
#pragma once
#include <stdint.h>

typedef uint32_t AEEventClass;
typedef uint32_t AEEventID;
// 'aevt', 'rapp', 'quit'
enum : uint32_t { kCoreEventClass = 0x61657674 };
enum : uint32_t { kAEReopenApplication = 0x72617070, kAEQuitApplication = 0x71756974 };
