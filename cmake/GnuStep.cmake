# GNUstep's Foundation, over which the Objective-C++ of the Mac's side runs in tests on Linux. Clang compiles it; where
# one of them is missing, these tests are not built, and CMake says so.
set(VELLMOOR_GNUSTEP_FLAGS "")
if(NOT APPLE)
  find_path(VELLMOOR_GNUSTEP_HEADERS Foundation/NSObject.h PATH_SUFFIXES GNUstep)
  find_library(VELLMOOR_GNUSTEP_BASE gnustep-base)
  file(GLOB runtimes /usr/lib/gcc/*/*/include/objc/objc.h)
  list(SORT runtimes COMPARE NATURAL)
  if(VELLMOOR_GNUSTEP_HEADERS AND VELLMOOR_GNUSTEP_BASE AND runtimes AND CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    list(GET runtimes -1 runtime) # GCC's: it comes with the library
    cmake_path(REPLACE_FILENAME runtime "../.." OUTPUT_VARIABLE runtime)
    cmake_path(NORMAL_PATH runtime)
    find_library(VELLMOOR_OBJC objc NAMES objc.so.4 HINTS ${runtime} REQUIRED)
    # Without reference counting by the compiler, which GCC's runtime does not know: objects live to the test's end.
    set(VELLMOOR_GNUSTEP_FLAGS -xobjective-c++ -fobjc-runtime=gcc -fexceptions -fobjc-exceptions
      -fconstant-string-class=NSConstantString -Wno-old-style-cast # what a bridge is to a compiler that counts nothing
      -idirafter ${runtime}/include)
  else()
    message(STATUS "Without clang and GNUstep's Foundation the Objective-C++ of the Mac's side is not tested")
  endif()
endif()

# vellmoor_objective_cxx(TARGET SOURCE...): adds these to the target, compiled as Objective-C++ over GNUstep.
function(vellmoor_objective_cxx target)
  target_sources(${target} PRIVATE ${ARGN})
  set_source_files_properties(${ARGN} PROPERTIES
    LANGUAGE CXX SKIP_PRECOMPILE_HEADERS ON COMPILE_OPTIONS "${VELLMOOR_GNUSTEP_FLAGS}")
endfunction()
