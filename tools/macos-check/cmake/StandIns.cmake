# Included after project(): what a Mac has and Linux has not, or has with Linux's headers.
list(PREPEND CMAKE_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR})
foreach(library WrapOpenGL WrapVulkanHeaders)
  add_library(${library}::${library} INTERFACE IMPORTED)
  set_target_properties(${library}::${library} PROPERTIES IMPORTED_GLOBAL ON)
endforeach()

# Objective-C++ is compiled, then analyzed.
set(CMAKE_OBJCXX_COMPILE_OBJECT
  "<CMAKE_OBJCXX_COMPILER> <DEFINES> <INCLUDES> -x objective-c++ <FLAGS> -o <OBJECT> -c <SOURCE>"
  "<CMAKE_OBJCXX_COMPILER> <DEFINES> <INCLUDES> -x objective-c++ <FLAGS> --analyze -Xclang -analyzer-output=text -Xclang -analyzer-werror -Xclang -analyzer-checker=osx,nullability -o <OBJECT>.text <SOURCE>")
foreach(language CXX OBJCXX)
  set(CMAKE_${language}_LINK_EXECUTABLE "${CMAKE_CURRENT_LIST_DIR}/../stand-ins/link.py --names ${VELLMOOR_MACOS_SDK}/names -o <TARGET> <OBJECTS> <LINK_LIBRARIES>")
endforeach()
