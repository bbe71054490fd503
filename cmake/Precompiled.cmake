# Precompiled headers: what nearly every source of a kind includes. Sources include all that they need all the same; a
# header that stands here is only read faster. A set is compiled once, in a target of its own, for all that read it.
set(VELLMOOR_STANDARD_HEADERS <algorithm> <chrono> <cstdint> <expected> <filesystem> <functional> <map> <memory>
  <optional> <ranges> <set> <span> <string> <string_view> <utility> <vector>)
set(VELLMOOR_TEST_HEADERS ${VELLMOOR_STANDARD_HEADERS} <fstream> <sstream> <gmock/gmock.h> <gtest/gtest.h>)
set(VELLMOOR_QT_HEADERS ${VELLMOOR_STANDARD_HEADERS} <QObject> <QString> <QStringList>)
set(VELLMOOR_WINDOW_HEADERS ${VELLMOOR_QT_HEADERS} <QAbstractListModel> <QImage> <QQmlEngine> <QQuickItem>
  <QQuickWindow> <QtQml/qqmlregistration.h>)
set(VELLMOOR_WINDOW_TEST_HEADERS ${VELLMOOR_TEST_HEADERS} ${VELLMOOR_WINDOW_HEADERS} <QCoreApplication> <QTest>)

function(vellmoor_compile_headers target)
  set(headers)
  foreach(header IN LISTS ARGN)
    string(REPLACE ">" "$<ANGLE-R>" header "${header}") # else it would end the expression around it
    list(APPEND headers "$<$<COMPILE_LANGUAGE:CXX>:${header}>")
  endforeach()
  target_precompile_headers(${target} PRIVATE ${headers})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    # A time stamp inside would keep ccache from ever finding it again.
    target_compile_options(${target} PRIVATE "SHELL:-Xclang -fno-pch-timestamp")
  endif()
endfunction()

# vellmoor_precompile(TARGET HEADERS...): a set of its own, for a target with flags of its own and more than a few
# sources.
function(vellmoor_precompile target)
  get_target_property(sources ${target} SOURCES)
  list(FILTER sources INCLUDE REGEX "\\.cpp$")
  list(LENGTH sources count)
  if(count GREATER 3)
    vellmoor_compile_headers(${target} ${ARGN})
  endif()
endfunction()

# Compilers want the same code generation where a set is made and where it is read. Qt asks for -fPIC, GLib for
# -pthread; so everything has both.
add_compile_options(-fPIC $<$<NOT:$<PLATFORM_ID:Darwin>>:-pthread>)

# vellmoor_header_set(NAME HEADERS...): a set that other targets read with REUSE_FROM.
function(vellmoor_header_set name)
  file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp CONTENT "// Only its precompiled headers count.\n")
  add_library(${name} OBJECT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
  target_link_libraries(${name} PRIVATE vellmoor_warnings)
  vellmoor_compile_headers(${name} ${ARGN})
endfunction()

# vellmoor_read_headers(TARGET SET): but not where Objective-C++ stands among the sources, for which there is no set.
function(vellmoor_read_headers target set)
  get_target_property(sources ${target} SOURCES)
  if(NOT sources MATCHES "\\.mm(;|$)")
    target_precompile_headers(${target} REUSE_FROM ${set})
  endif()
endfunction()

vellmoor_header_set(vellmoor_standard_headers ${VELLMOOR_STANDARD_HEADERS})
