# GoogleTest's headers, shown apart from the system's own.
foreach(library gtest gtest_main gmock gmock_main)
  if(NOT TARGET GTest::${library})
    add_library(GTest::${library} INTERFACE IMPORTED GLOBAL)
    target_include_directories(GTest::${library} INTERFACE ${VELLMOOR_MACOS_SDK}/others)
  endif()
endforeach()
set(GTest_FOUND TRUE)
