# quillary_translations(target) compiles the texts in translations/ into the target, as :/translations/quillary_<language>.qm.
set(place ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS})
find_program(QUILLARY_LRELEASE lrelease REQUIRED HINTS ${place} NO_CMAKE_SYSTEM_PATH DOC "Compiles translations")
find_program(QUILLARY_LUPDATE lupdate REQUIRED HINTS ${place} NO_CMAKE_SYSTEM_PATH DOC "Finds the texts of the sources")

function(quillary_translations target)
  file(GLOB texts CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/translations/quillary_*.ts)
  foreach(text IN LISTS texts)
    get_filename_component(name ${text} NAME_WE)
    set(compiled ${CMAKE_CURRENT_BINARY_DIR}/translations/${name}.qm)
    add_custom_command(OUTPUT ${compiled}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_CURRENT_BINARY_DIR}/translations
      COMMAND ${QUILLARY_LRELEASE} -silent ${text} -qm ${compiled}
      DEPENDS ${text}
      VERBATIM)
    set_source_files_properties(${compiled} PROPERTIES QT_RESOURCE_ALIAS ${name}.qm)
    list(APPEND all ${compiled})
  endforeach()
  qt_add_resources(${target} ${target}_texts PREFIX /translations FILES ${all})
endfunction()
