# Every target of the project compiles with these; each one is an error, but for packages: the next compiler knows more of them.
option(VELLMOOR_WARNINGS_ARE_ERRORS "Let a warning end the build" ON)
add_library(vellmoor_warnings INTERFACE)
target_compile_options(vellmoor_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wnon-virtual-dtor
  -Woverloaded-virtual -Wold-style-cast -Wformat=2 -Wimplicit-fallthrough -Wextra-semi
  -Wundef $<$<BOOL:${VELLMOOR_WARNINGS_ARE_ERRORS}>:-Werror>
  # Designated initialisers leave out what keeps its default.
  -Wno-missing-field-initializers
  # GCC 12 sees overlapping copies in std::string's operator+ where there are none (GCC bug 105651),
  # and, inlined further, writes beyond the bounds of a string: Clang and the sanitizers look after those.
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wduplicated-branches -Wlogical-op -Wno-restrict -Wno-array-bounds -Wno-stringop-overflow>
  # Clang reports what libstdc++ itself calls inside std::stable_sort.
  $<$<AND:$<CXX_COMPILER_ID:Clang>,$<NOT:$<PLATFORM_ID:Darwin>>>:-Wno-deprecated-declarations>)
