# Every target of the project compiles with these; each one is an error, but for packages: the next compiler knows more of them.
option(VELLMOOR_WARNINGS_ARE_ERRORS "Let a warning end the build" ON)
add_library(vellmoor_warnings INTERFACE)
target_compile_options(vellmoor_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wnon-virtual-dtor
  -Woverloaded-virtual -Wold-style-cast -Wformat=2 -Wimplicit-fallthrough -Wextra-semi
  -Wundef
  # Apple's compilers are newer than any that the sources were tried with: what only they say is no reason to stop.
  $<$<AND:$<BOOL:${VELLMOOR_WARNINGS_ARE_ERRORS}>,$<NOT:$<CXX_COMPILER_ID:AppleClang>>>:-Werror>
  # Designated initialisers leave out what keeps its default.
  -Wno-missing-field-initializers
  # GCC 12 sees overlapping copies in std::string's operator+ where there are none (GCC bug 105651),
  # and, inlined further, writes beyond the bounds of a string: Clang and the sanitizers look after those.
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wduplicated-branches -Wlogical-op -Wno-restrict -Wno-array-bounds -Wno-stringop-overflow>
  # Clang reports what libstdc++ itself calls inside std::stable_sort.
  $<$<AND:$<CXX_COMPILER_ID:Clang>,$<NOT:$<PLATFORM_ID:Darwin>>>:-Wno-deprecated-declarations>)
# Homebrew's Qt is newer than the oldest that is built with: what was deprecated since then is still there.
target_compile_definitions(vellmoor_warnings INTERFACE $<$<PLATFORM_ID:Darwin>:QT_WARN_DEPRECATED_UP_TO=0x060400>)
