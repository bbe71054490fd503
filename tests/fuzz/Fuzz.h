#pragma once

#include <cstdio>
#include <cstdlib>

/// A property of the readers; unlike assert() it holds in every build.
#define FUZZ_EXPECT(condition)                                                                                         \
    do {                                                                                                               \
        if (!(condition)) {                                                                                            \
            std::fprintf(stderr, "%s:%d: does not hold: %s\n", __FILE__, __LINE__, #condition);                        \
            std::abort();                                                                                              \
        }                                                                                                              \
    } while (false)
