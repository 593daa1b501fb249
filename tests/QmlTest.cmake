find_package(Qt6 6.4 REQUIRED COMPONENTS QuickTest Test)

# wrapio_qml_test(NAME SOURCES … QML … LIBRARIES …)
#
# A Qt Quick Test program over its QML files, which are all that are called tst_*.qml in the folder: run by CTest without a display, once with what the
# machine draws with and once with the software renderer, which must look and behave the same.
function(wrapio_qml_test name)
  cmake_parse_arguments(TEST "" "" "SOURCES;QML;LIBRARIES" ${ARGN})
  add_executable(${name} ${TEST_SOURCES})
  target_sources(${name} PRIVATE ${TEST_QML})
  set_target_properties(${name} PROPERTIES AUTOMOC ON)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_compile_definitions(${name} PRIVATE QUICK_TEST_SOURCE_DIR="${CMAKE_CURRENT_SOURCE_DIR}")
  target_link_libraries(${name} PRIVATE wrapio_options ${TEST_LIBRARIES} Qt6::QuickTest)
  if(NOT WRAPIO_BUILD_UNIT_TESTS)
    set_target_properties(${name} PROPERTIES EXCLUDE_FROM_ALL ON)
    return()
  endif()
  foreach(backend rhi software)
    string(REPLACE rhi "" suffix ${backend})
    set(with_display "")
    set(leaks suppressions=${PROJECT_SOURCE_DIR}/tests/Sanitizers/scenes.supp)
    # What the machine draws with is only there where there is a display. It is unloaded before leaks are counted, and
    # then they cannot be told from its own; the other run counts them.
    if(backend STREQUAL rhi)
      set(with_display xvfb-run -a ${CMAKE_COMMAND} -E env KEEP_DISPLAY=1)
      set(leaks detect_leaks=0)
    endif()
    add_test(NAME ${name}${suffix}
             COMMAND ${with_display} ${PROJECT_SOURCE_DIR}/tests/with-private-home $<TARGET_FILE:${name}>)
    set_tests_properties(${name}${suffix} PROPERTIES LABELS unit TIMEOUT 600
                         ENVIRONMENT "QT_QUICK_BACKEND=${backend};QT_QPA_PLATFORM=offscreen;LSAN_OPTIONS=${leaks}")
  endforeach()
endfunction()
