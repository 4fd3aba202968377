# SPDX-License-Identifier: MIT
# One way to declare each kind of target, so that the CMakeLists of a folder is only its list of files and links.

# Turns AUTO into ON or OFF by whether the package is installed; ON makes the package required.
macro(zw_resolve_auto option package)
  if(${option} STREQUAL "AUTO")
    find_package(${package} QUIET)
    set(${option} ${${package}_FOUND})
    if(NOT ${package}_FOUND)
      message(STATUS "${option}: off, ${package} is not installed")
    endif()
  elseif(${option})
    find_package(${package} REQUIRED)
  endif()
endmacro()

# The headers that most sources share, parsed once for a target instead of once for each source.
set(ZW_SHARED_HEADERS <algorithm> <array> <cstdint> <functional> <map> <memory> <optional> <string> <string_view>
                      <utility> <vector> <fmt/format.h>)
set(ZW_SHARED_WIDGET_HEADERS <QAction> <QApplication> <QCheckBox> <QComboBox> <QDialog> <QDialogButtonBox> <QFile>
                             <QFormLayout> <QHeaderView> <QLabel> <QLineEdit> <QMenu> <QPainter> <QPlainTextEdit>
                             <QPushButton> <QTimer> <QVBoxLayout>)
set(ZW_SHARED_TEST_HEADERS <gmock/gmock.h>)

function(zw_precompile name)
  get_target_property(sources ${name} SOURCES)
  list(LENGTH sources count)
  if(ZW_PCH AND count GREATER 7) # Making the header costs as much as a few sources do.
    target_precompile_headers(${name} PRIVATE ${ARGN})
  endif()
endfunction()

# zw_library(zw_data SOURCES A.cpp B.cpp LINKS zw_base [QT | WIDGETS])
# Both run moc. Includes are written from src/: "data/SymbolMap.h".
function(zw_library name)
  cmake_parse_arguments(A "QT;WIDGETS" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${A_SOURCES})
  target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
  target_link_libraries(${name} PUBLIC ${A_LINKS})
  if(A_QT OR A_WIDGETS)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    target_compile_definitions(${name} PUBLIC QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII)
  endif()
  if(A_WIDGETS)
    zw_precompile(${name} ${ZW_SHARED_HEADERS} ${ZW_SHARED_WIDGET_HEADERS})
  else()
    zw_precompile(${name} ${ZW_SHARED_HEADERS})
  endif()
endfunction()

# zw_tests(data_tests SOURCES ... LINKS zw_data [GUI])
# Every case becomes one ctest entry. GUI tests run on the offscreen platform.
function(zw_tests name)
  cmake_parse_arguments(A "GUI" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${A_SOURCES})
  # Not beside the programs: a test of what is started from there must not find the real ones.
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin/tests")
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/src" "${PROJECT_SOURCE_DIR}/tests")
  target_compile_definitions(${name} PRIVATE ZW_TEST_FILES="${PROJECT_SOURCE_DIR}/tests/files"
                                             ZW_SOURCE_DIR="${PROJECT_SOURCE_DIR}"
                                             ZW_BIN_DIR="${CMAKE_BINARY_DIR}/bin")
  target_link_libraries(${name} PRIVATE ${A_LINKS} GTest::gmock GTest::gtest)
  # What is tested is optimised as it is shipped; to optimise the tests too costs more than it saves.
  target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-O0>)
  if(A_GUI)
    target_link_libraries(${name} PRIVATE Qt6::Test)
    zw_precompile(${name} ${ZW_SHARED_HEADERS} ${ZW_SHARED_TEST_HEADERS} ${ZW_SHARED_WIDGET_HEADERS})
  else()
    target_link_libraries(${name} PRIVATE GTest::gtest_main)
    zw_precompile(${name} ${ZW_SHARED_HEADERS} ${ZW_SHARED_TEST_HEADERS})
  endif()
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
endfunction()

# zw_bench(bench_merge SOURCES ... LINKS ...): a Google Benchmark program.
function(zw_bench name)
  cmake_parse_arguments(A "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${A_SOURCES})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin/bench")
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/src" "${PROJECT_SOURCE_DIR}/tests"
                                             "${PROJECT_SOURCE_DIR}/bench")
  target_link_libraries(${name} PRIVATE ${A_LINKS} benchmark::benchmark)
endfunction()

# zw_fuzzer(data_line SOURCES ... LINKS ...): a libFuzzer program with ZW_FUZZ, else a program that replays the files
# of fuzz/corpus/<name> once each, which ctest runs.
function(zw_fuzzer name)
  cmake_parse_arguments(A "" "" "SOURCES;LINKS" ${ARGN})
  set(target fuzz_${name})
  add_executable(${target} ${A_SOURCES})
  target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}/src" "${PROJECT_SOURCE_DIR}/tests")
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin/fuzz")
  target_link_libraries(${target} PRIVATE ${A_LINKS})
  if(ZW_FUZZ)
    target_link_options(${target} PRIVATE -fsanitize=fuzzer)
  else()
    target_sources(${target} PRIVATE "${PROJECT_SOURCE_DIR}/fuzz/Replay.cpp")
  endif()
  if(ZW_TESTS)
    if(ZW_FUZZ)
      add_test(NAME fuzz.${name} COMMAND ${target} -runs=0 "${PROJECT_SOURCE_DIR}/fuzz/corpus/${name}")
    else()
      add_test(NAME fuzz.${name} COMMAND ${target} "${PROJECT_SOURCE_DIR}/fuzz/corpus/${name}")
    endif()
    set_tests_properties(fuzz.${name} PROPERTIES TIMEOUT 120)
  endif()
endfunction()
