# vellmoor_qml_module(NAME uri SOURCES cpp... USES targets...): the calling folder and its subfolders as one static QML module
# vellmoor_ui_NAME of all its *.qml. A QML file that begins with "pragma Singleton" becomes a singleton.
function(vellmoor_qml_module name uri)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES;DEPENDENCIES" ${ARGN})
  file(GLOB_RECURSE qml_files CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} *.qml)
  foreach(file IN LISTS qml_files)
    file(STRINGS ${file} pragma REGEX "^pragma Singleton" LIMIT_COUNT 1)
    if(pragma)
      set_source_files_properties(${file} PROPERTIES QT_QML_SINGLETON_TYPE TRUE)
    endif()
  endforeach()
  set(target vellmoor_ui_${name})
  qt_add_library(${target} STATIC)
  set_target_properties(${target} PROPERTIES AUTOMOC ON)
  qt_add_qml_module(${target}
    URI ${uri} VERSION 1.0 RESOURCE_PREFIX /qt/qml DEPENDENCIES ${ARG_DEPENDENCIES}
    QML_FILES ${qml_files} SOURCES ${ARG_SOURCES})
  # Headers are named without their room: what Qt generates knows them by no other name.
  set(rooms ${CMAKE_CURRENT_SOURCE_DIR})
  foreach(source IN LISTS ARG_SOURCES)
    cmake_path(GET source PARENT_PATH room)
    list(APPEND rooms ${CMAKE_CURRENT_SOURCE_DIR}/${room})
  endforeach()
  list(REMOVE_DUPLICATES rooms)
  target_include_directories(${target} PUBLIC ${rooms})
  target_link_libraries(${target} PUBLIC ${ARG_USES} Qt6::Quick)
  # The strict warnings are for the files written here, not for what Qt's tools generate from them.
  get_target_property(warnings vellmoor_warnings INTERFACE_COMPILE_OPTIONS)
  set(own ${ARG_SOURCES})
  list(FILTER own INCLUDE REGEX "\\.cpp$")
  if(own)
    set_source_files_properties(${own} PROPERTIES COMPILE_OPTIONS "${warnings}" SKIP_UNITY_BUILD_INCLUSION ON)
  endif()
  # GCC wants the warnings of a set to be those of its readers; here only the sources written by hand have them.
  if(own AND NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    vellmoor_precompile(${target} ${VELLMOOR_WINDOW_HEADERS})
  endif()
  # One small generated file per QML file, all with the same headers: compile them in bundles.
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 10)
  if(VELLMOOR_SANITIZE)
    # Sanitizers look at the code written here; compiling QML to C++ would only cost time there.
    set_target_properties(${target} PROPERTIES QT_QMLCACHEGEN_ARGUMENTS --only-bytecode)
  endif()
endfunction()
