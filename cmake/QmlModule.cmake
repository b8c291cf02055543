# SPDX-License-Identifier: MIT
# The build tree's modules, for the tools that read them there.
set(QT_QML_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/qml)

# clavo_qml_module(TARGET URI … IMPORTS … SINGLETONS … QML_FILES …): makes a layer's library a QML
# module in the program's resources.
function(clavo_qml_module target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "URI" "IMPORTS;SINGLETONS;QML_FILES")
  set_target_properties(${target} PROPERTIES AUTOMOC ON)
  set_source_files_properties(${arg_SINGLETONS} PROPERTIES QT_QML_SINGLETON_TYPE TRUE)
  set(interpreted)
  if(NOT CMAKE_BUILD_TYPE STREQUAL "Release")
    set(interpreted NO_CACHEGEN) # Compiled in advance it starts sooner and takes minutes to build.
  endif()
  qt_add_qml_module(${target}
    URI ${arg_URI} VERSION 1.0
    RESOURCE_PREFIX /qt-project.org/imports # Where every engine looks.
    NO_PLUGIN ${interpreted}
    IMPORTS ${arg_IMPORTS}
    QML_FILES ${arg_SINGLETONS} ${arg_QML_FILES})
  target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}) # Generated code names bare headers.
  # Our warnings are about what we write.
  get_target_property(generated ${target} SOURCES)
  list(FILTER generated INCLUDE REGEX "^${CMAKE_CURRENT_BINARY_DIR}/")
  set_source_files_properties(${generated} PROPERTIES COMPILE_OPTIONS -w)
  # These tell qmllint which module a source file belongs to.
  string(REPLACE . _ name ${arg_URI})
  set(resources qmake_${name})
  if(arg_SINGLETONS OR arg_QML_FILES)
    list(APPEND resources ${target}_raw_qml_0)
  endif()
  list(TRANSFORM resources REPLACE "(.+)" "--resource=${CMAKE_CURRENT_BINARY_DIR}/.rcc/\\1.qrc")
  set_property(GLOBAL APPEND PROPERTY CLAVO_QMLLINT_ARGUMENTS ${resources})
endfunction()
