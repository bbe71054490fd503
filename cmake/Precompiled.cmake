# Precompiled headers: what nearly every source of a kind includes. Sources include all that they need all the same; a
# header that stands here is only read faster.
set(VELLMOOR_STANDARD_HEADERS <algorithm> <chrono> <cstdint> <expected> <filesystem> <functional> <map> <memory>
  <optional> <ranges> <set> <span> <string> <string_view> <utility> <vector>)
set(VELLMOOR_TEST_HEADERS ${VELLMOOR_STANDARD_HEADERS} <fstream> <sstream> <gmock/gmock.h> <gtest/gtest.h>)
set(VELLMOOR_QT_HEADERS ${VELLMOOR_STANDARD_HEADERS} <QObject> <QString> <QStringList>)
set(VELLMOOR_WINDOW_HEADERS ${VELLMOOR_QT_HEADERS} <QAbstractListModel> <QImage> <QQmlEngine> <QQuickItem>
  <QQuickWindow> <QtQml/qqmlregistration.h>)
set(VELLMOOR_WINDOW_TEST_HEADERS ${VELLMOOR_TEST_HEADERS} ${VELLMOOR_WINDOW_HEADERS} <QCoreApplication> <QTest>)

# Only for targets with more than a few sources: the headers are compiled once for each target.
function(vellmoor_precompile target)
  get_target_property(sources ${target} SOURCES)
  list(FILTER sources INCLUDE REGEX "\\.cpp$")
  list(LENGTH sources count)
  if(count LESS 4)
    return()
  endif()
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
