# What nearly every file includes, read once. Only for builds that nobody starts: the others show that each file includes
# what it needs.
#
# Two sets: "layer" for the libraries of the program, "test" for test programs. wrapio_precompile(TARGET SET) takes one.
option(WRAPIO_PRECOMPILE_HEADERS "Read the headers of the libraries once for all files" OFF)

function(wrapio_add_precompiled name)
  cmake_parse_arguments(SET "" "" "LIBRARIES;HEADERS" ${ARGN})
  find_package(Qt6 6.4 REQUIRED COMPONENTS Core)
  find_package(tl-expected REQUIRED)
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/precompiled/${name}.cpp CONTENT "// Carries the precompiled headers.\n")
  add_library(wrapio_precompiled_${name} STATIC ${CMAKE_BINARY_DIR}/precompiled/${name}.cpp)
  target_link_libraries(wrapio_precompiled_${name} PRIVATE wrapio_options ${SET_LIBRARIES})
  target_precompile_headers(wrapio_precompiled_${name} PRIVATE ${SET_HEADERS})
endfunction()

function(wrapio_precompile target set)
  if(NOT WRAPIO_PRECOMPILE_HEADERS)
    return()
  endif()
  if(NOT TARGET wrapio_precompiled_${set})
    set(headers <algorithm> <chrono> <functional> <map> <memory> <optional> <set> <string> <utility> <variant> <vector>
                <QDateTime> <QDir> <QFile> <QHash> <QObject> <QString> <QStringList> <QUrl> <QUuid>
                <QVariant> <tl/expected.hpp>)
    set(libraries Qt6::Core tl::expected)
    if(set STREQUAL test)
      find_package(GTest REQUIRED)
      list(APPEND headers <gmock/gmock.h> <gtest/gtest.h>)
      list(APPEND libraries GTest::gmock GTest::gtest)
    endif()
    wrapio_add_precompiled(${set} HEADERS ${headers} LIBRARIES ${libraries})
  endif()
  target_precompile_headers(${target} REUSE_FROM wrapio_precompiled_${set})
  # So that ccache can tell what came out of it.
  target_compile_options(${target} PRIVATE -fpch-preprocess)
endfunction()
