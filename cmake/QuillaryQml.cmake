# quillary_qml_module(folder name FILES file.qml... [TYPES_OF module...])
# Makes the library of a folder the QML module Quillary.<name>. Its files are compiled ahead of time, and what qmllint has
# to say about them fails the build. TYPES_OF are the modules whose types its own C++ types show, besides QtQuick.
function(quillary_qml_module folder name)
  cmake_parse_arguments(arg "" "" "FILES;TYPES_OF" ${ARGN})
  set(target quillary_${folder})
  set_target_properties(${target} PROPERTIES AUTOMOC ON)
  # The types' registration includes their headers by bare name.
  target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  qt_add_qml_module(${target}
    URI Quillary.${name}
    VERSION 1.0
    RESOURCE_PREFIX /qt/qml
    OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/qml/Quillary/${name}
    DEPENDENCIES QtQuick ${arg_TYPES_OF}
    IMPORT_PATH ${CMAKE_BINARY_DIR}/qml
    QML_FILES ${arg_FILES})

  get_target_property(sources ${target} SOURCES)
  list(FILTER sources INCLUDE REGEX "/qmlcache/")
  set_source_files_properties(${sources} PROPERTIES COMPILE_OPTIONS -w)

  set(checked ${CMAKE_CURRENT_BINARY_DIR}/${target}.qmllint)
  string(REPLACE "." "_" uri Quillary.${name})
  add_custom_command(
    OUTPUT ${checked}
    COMMAND Qt6::qmllint --bare -I ${CMAKE_BINARY_DIR}/qml -I ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_QML}
            --resource ${CMAKE_CURRENT_BINARY_DIR}/.rcc/qmake_${uri}.qrc
            --resource ${CMAKE_CURRENT_BINARY_DIR}/.rcc/${target}_raw_qml_0.qrc ${arg_FILES}
    COMMAND ${CMAKE_COMMAND} -E touch ${checked}
    WORKING_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}
    DEPENDS ${arg_FILES} ${target}
    COMMENT "Checking Quillary.${name} with qmllint"
    VERBATIM)
  add_custom_target(${target}_checked ALL DEPENDS ${checked})
endfunction()
