# SPDX-License-Identifier: MIT
include(GoogleTest)

# The sanitizers run the tests; the analyser takes four fifths of the time there and finds gmock.
if(CLAVO_TIDY)
  list(APPEND CMAKE_CXX_CLANG_TIDY --checks=-clang-analyzer-*)
endif()

# In seconds. Only a failure takes as long: busy and sanitized machines need a multiple of the usual time.
set(unit_timeout 400)
set(desktop_timeout 600)

# A folder has at most one program of tests, whose target has the folder's name: tests/unit/audio makes unit.audio and
# tools/clavo-type/tests makes tools.clavo-type. clavo_test and clavo_desktop_test take
#   SOURCES, LINK, DEFINITIONS and DEPENDS: what the program is made of, links, has defined and is built after;
#   AUTOMOC: run Qt's meta-object compiler;
#   PROPERTIES: further properties of the tests.
# This macro reads the arguments into arg_… and adds the program, whose target it puts into `name`.
macro(clavo_test_program)
  cmake_parse_arguments(arg "AUTOMOC;WINDOWS" "DISPLAY;LAUNCHER" "SOURCES;LINK;DEFINITIONS;DEPENDS;PROPERTIES" ${ARGN})
  cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE name)
  string(REGEX REPLACE "^tests/|/tests$" "" name ${name})
  string(REPLACE / . name ${name})
  add_executable(${name} ${arg_SOURCES})
  set_target_properties(${name} PROPERTIES AUTOMOC ${arg_AUTOMOC})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_compile_definitions(${name} PRIVATE ${arg_DEFINITIONS})
  target_link_libraries(${name} PRIVATE ${arg_LINK} GTest::gmock) # The precompiled headers have it.
  # As the precompiled headers, and as programs of Qt anyway.
  target_compile_options(${name} PRIVATE -fPIC -pthread)
  target_precompile_headers(${name} REUSE_FROM test_headers)
  if(arg_DEPENDS)
    add_dependencies(${name} ${arg_DEPENDS})
  endif()
endmacro()

add_custom_target(unit_tests) # What the label `unit` runs.

# clavo_test([WINDOWS] …): tests that need no desktop; ctest runs each as a process of its own. With WINDOWS they may
# open windows, on a display that shows nothing.
function(clavo_test)
  clavo_test_program(${ARGN})
  if(arg_WINDOWS)
    set(label ui)
    target_link_libraries(${name} PRIVATE test_windows)
  else()
    set(label unit)
    target_link_libraries(${name} PRIVATE GTest::gmock_main)
    add_dependencies(unit_tests ${name})
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
    PROPERTIES LABELS ${label} TIMEOUT ${unit_timeout} ${arg_PROPERTIES})
endfunction()

# clavo_desktop_test([DISPLAY wayland] [LAUNCHER COMMAND] …): tests that run in one process, in a virtual desktop of its
# own, X11's by default, started by the launcher if there is one.
function(clavo_desktop_test)
  clavo_test_program(${ARGN})
  target_link_libraries(${name} PRIVATE GTest::gmock_main)
  set(desktop ${PROJECT_SOURCE_DIR}/scripts/virtual-desktop)
  if(arg_DISPLAY)
    list(APPEND desktop --display ${arg_DISPLAY})
  endif()
  add_test(NAME ${name} COMMAND ${desktop} ${arg_LAUNCHER} $<TARGET_FILE:${name}>)
  set_tests_properties(${name} PROPERTIES LABELS desktop TIMEOUT ${desktop_timeout} ${arg_PROPERTIES})
endfunction()
