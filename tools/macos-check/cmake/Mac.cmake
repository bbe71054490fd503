# Tells CMake on Linux that it configures for a Mac on Apple silicon. Needs VELLMOOR_MACOS_SDK, the folder of sdk.sh.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR arm64)
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VELLMOOR_MACOS_SDK)
set(CMAKE_OSX_SYSROOT ${VELLMOOR_MACOS_SDK})

find_program(clang clang-19 REQUIRED)
find_program(clangxx clang++-19 REQUIRED)
set(CMAKE_C_COMPILER ${clang})
set(CMAKE_CXX_COMPILER ${clangxx})
set(CMAKE_OBJCXX_COMPILER ${clangxx})
# Nothing is linked for real; stand-ins/link.py looks at what would be.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_INSTALL_NAME_TOOL true)
set(CMAKE_RANLIB true)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../stand-ins/run-program.sh)

set(flags "-isystem ${CMAKE_CURRENT_LIST_DIR}/../decls -Wno-darwin-sdk-settings -Wunguarded-availability")
foreach(language C CXX OBJCXX)
  set(CMAKE_${language}_COMPILER_TARGET arm64-apple-macos14.0)
  set(CMAKE_${language}_FLAGS_INIT "${flags}")
endforeach()
string(APPEND CMAKE_OBJCXX_FLAGS_INIT " -Wundeclared-selector -Wnullable-to-nonnull-conversion")

# Qt's headers and code generators are those installed here. Homebrew has no pkg-config files of Linux libraries.
set(CMAKE_LIBRARY_ARCHITECTURE ${VELLMOOR_LINUX_ARCHITECTURE})
set(CMAKE_PREFIX_PATH /usr)
set(PKG_CONFIG_EXECUTABLE false)
set(CMAKE_PROJECT_INCLUDE ${CMAKE_CURRENT_LIST_DIR}/StandIns.cmake)
