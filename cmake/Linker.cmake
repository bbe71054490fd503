# lld links in a fraction of the time of GNU's linker. GCC looks for it under one name only, which Debian's package
# does not have, in a folder that it is told.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT APPLE)
  find_program(VELLMOOR_LLD NAMES ld.lld-19 ld.lld)
  if(VELLMOOR_LLD)
    file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/linker)
    file(CREATE_LINK ${VELLMOOR_LLD} ${CMAKE_BINARY_DIR}/linker/ld.lld SYMBOLIC)
    add_link_options(-B${CMAKE_BINARY_DIR}/linker -fuse-ld=lld)
  endif()
endif()
