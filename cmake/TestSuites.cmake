# vellmoor_discover_suites(PROGRAM [PREFIX text] [TIMEOUT seconds] [COST seconds]): ctest sees each class of tests of a
# test program as one test. A process of its own for each single one of some 2,700 costs more than what they test.
# `ctest -jN` with N twice the processors: what computes takes two places; journeys and tests on a desktop, which wait half
# of their time, take one.
function(vellmoor_discover_suites program)
  cmake_parse_arguments(ARG "" "PREFIX;TIMEOUT;COST" "" ${ARGN})
  set(script ${CMAKE_CURRENT_BINARY_DIR}/${program}_suites.cmake)
  file(GENERATE OUTPUT ${script} CONTENT "set(program \"$<TARGET_FILE:${program}>\")
set(prefix \"${ARG_PREFIX}\")
set(properties TIMEOUT ${ARG_TIMEOUT} COST ${ARG_COST} PROCESSORS 2)
include(\"${PROJECT_SOURCE_DIR}/cmake/ListSuites.cmake\")
")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${script})
endfunction()
