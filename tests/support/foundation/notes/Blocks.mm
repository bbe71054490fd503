// As clang lays blocks out ("Block Implementation Specification"). Variables marked __block are not known here.
#include "Blocks.h"

#include <Foundation/Foundation.h>
#include <cstdlib>
#include <cstring>

namespace {

struct Descriptor {
    unsigned long reserved;
    unsigned long size;
    void (*copy)(void* to, const void* from); // these two only where the flags say so
    void (*dispose)(const void* block);
};

struct Layout {
    void* isa;
    int flags;
    int reserved;
    void (*invoke)();
    const Descriptor* descriptor;
};

constexpr int isCopied = 1 << 24, holdsObjects = 1 << 25, isGlobal = 1 << 28;
constexpr int fieldIsObject = 3, fieldIsBlock = 7;

} // namespace

extern "C" {

void* _NSConcreteStackBlock[32];
void* _NSConcreteGlobalBlock[32];

// A copy's copies are counted in `reserved`.
void* _Block_copy(const void* block) {
    auto* const from = static_cast<Layout*>(const_cast<void*>(block));
    if (from == nullptr || (from->flags & isGlobal) != 0) {
        return from;
    }
    if ((from->flags & isCopied) != 0) {
        ++from->reserved;
        return from;
    }
    auto* const to = static_cast<Layout*>(std::malloc(from->descriptor->size));
    std::memcpy(to, from, from->descriptor->size);
    to->flags |= isCopied;
    to->reserved = 1;
    if ((to->flags & holdsObjects) != 0) {
        to->descriptor->copy(to, from);
    }
    return to;
}

void _Block_release(const void* block) {
    auto* const layout = static_cast<Layout*>(const_cast<void*>(block));
    if (layout == nullptr || (layout->flags & isCopied) == 0 || --layout->reserved > 0) {
        return;
    }
    if ((layout->flags & holdsObjects) != 0) {
        layout->descriptor->dispose(layout);
    }
    std::free(layout);
}

void _Block_object_assign(void* to, const void* object, const int flags) {
    if (flags == fieldIsBlock) {
        *static_cast<void**>(to) = _Block_copy(object);
    } else if (flags == fieldIsObject) {
        *static_cast<id*>(to) = [(id)object retain];
    } else {
        std::abort();
    }
}

void _Block_object_dispose(const void* object, const int flags) {
    if (flags == fieldIsBlock) {
        _Block_release(object);
    } else if (flags == fieldIsObject) {
        [(id)object release];
    }
}
}
