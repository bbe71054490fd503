// The platform's tests use the real GIO, which reads these variables once: they are set before anything of it runs.
#include "TemporaryFolder.h"

#include <gmock/gmock.h>

#include <array>
#include <cstdlib>

// When a rename fails, GLib 2.74's own move to the Trash forgets two of its strings; errors, which are ours to free,
// are allocated otherwise and still reported. LeakSanitizer asks for this function by this name.
extern "C" const char* __lsan_default_suppressions() { // NOLINT(bugprone-reserved-identifier)
    return "leak:g_realloc\nleak:__vasprintf_internal\n";
}

int main(int count, char** words) {
    const vellmoor::test::TemporaryFolder home;
    ::setenv("HOME", home.path().c_str(), 1);
    ::setenv("GIO_USE_VFS", "local", 1);
    for (const char* name : std::array{"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME",
                                       "XDG_DATA_DIRS", "XDG_CONFIG_DIRS", "XDG_RUNTIME_DIR", "DISPLAY",
                                       "DBUS_SESSION_BUS_ADDRESS", "LANGUAGE", "LC_ALL"}) {
        ::unsetenv(name);
    }
    ::testing::InitGoogleMock(&count, words);
    return RUN_ALL_TESTS();
}
