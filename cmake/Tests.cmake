# SPDX-License-Identifier: MIT
include(GoogleTest)

# The sanitizers run the tests; the analyser takes four fifths of the time there and finds gmock.
if(CLAVO_TIDY)
  list(APPEND CMAKE_CXX_CLANG_TIDY --checks=-clang-analyzer-*)
endif()

# In seconds; the sanitizers make programs several times slower.
set(unit_timeout 120)
set(desktop_timeout 180)
if(CLAVO_SANITIZE)
  set(unit_timeout 400)
  set(desktop_timeout 600)
endif()

# clavo_test_program(NAME SOURCES … LINK …): a program of tests, compiled as the headers are, which Qt's programs are anyway.
function(clavo_test_program name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINK")
  add_executable(${name} ${arg_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${arg_LINK} GTest::gmock_main)
  target_compile_options(${name} PRIVATE -fPIC -pthread)
  target_precompile_headers(${name} REUSE_FROM test_headers)
endfunction()

add_custom_target(unit_tests)

# clavo_test(NAME SOURCES … LINK …): a program of tests that need no desktop; ctest runs each test as its own process.
function(clavo_test name)
  clavo_test_program(${name} ${ARGN})
  add_dependencies(unit_tests ${name})
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT ${unit_timeout} LABELS unit)
endfunction()

# clavo_desktop_test(NAME [DISPLAY wayland] [LAUNCHER COMMAND] SOURCES … LINK …): a program of tests that runs once, in a
# virtual desktop of its own, X11's unless told otherwise, started by the launcher where there is one.
function(clavo_desktop_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "DISPLAY;LAUNCHER" "SOURCES;LINK")
  set(desktop ${PROJECT_SOURCE_DIR}/scripts/virtual-desktop)
  if(arg_DISPLAY)
    list(APPEND desktop --display ${arg_DISPLAY})
  endif()
  clavo_test_program(${name} SOURCES ${arg_SOURCES} LINK ${arg_LINK})
  add_test(NAME desktop.${name} COMMAND ${desktop} ${arg_LAUNCHER} $<TARGET_FILE:${name}>)
  set_tests_properties(desktop.${name} PROPERTIES LABELS desktop TIMEOUT ${desktop_timeout})
endfunction()
