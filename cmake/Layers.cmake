# A layer is a static library whose only public include folder is its own. A header of another layer is
# found only when that layer is named here, so an include against the arrows does not compile. HEADERS: what to
# precompile instead of the standard headers.
function(vellmoor_layer name)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES;LIBRARIES;HEADERS" ${ARGN})
  add_library(vellmoor_${name} STATIC ${ARG_SOURCES})
  target_include_directories(vellmoor_${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
  foreach(used IN LISTS ARG_USES)
    target_link_libraries(vellmoor_${name} PUBLIC vellmoor_${used})
  endforeach()
  target_link_libraries(vellmoor_${name} PUBLIC ${ARG_LIBRARIES} Threads::Threads PRIVATE vellmoor_warnings)
  if(ARG_HEADERS)
    vellmoor_precompile(vellmoor_${name} ${ARG_HEADERS})
  else()
    vellmoor_read_headers(vellmoor_${name} vellmoor_standard_headers)
  endif()
endfunction()
