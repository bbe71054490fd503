# Compiler of the sanitizer builds. Clang takes about half of GCC's time for them; the release build is GCC's, so both
# look at every line. A Mac has one compiler, and so may another system.
if(NOT CMAKE_HOST_APPLE)
  find_program(VELLMOOR_CLANG NAMES clang++-19 clang++)
  find_program(VELLMOOR_CLANG_C NAMES clang-19 clang)
  find_program(VELLMOOR_LLD NAMES ld.lld-19 ld.lld)
  if(VELLMOOR_CLANG AND VELLMOOR_CLANG_C)
    set(CMAKE_C_COMPILER ${VELLMOOR_CLANG_C})
    set(CMAKE_CXX_COMPILER ${VELLMOOR_CLANG})
    if(VELLMOOR_LLD)
      set(CMAKE_EXE_LINKER_FLAGS_INIT "--ld-path=${VELLMOOR_LLD}")
    endif()
  endif()
endif()
