# One call makes one folder of the house: a static library with the project's warnings and its allowed neighbours.
find_package(Threads REQUIRED)
include(QuillaryPrecompiled)

add_library(quillary_options INTERFACE)
target_compile_options(quillary_options INTERFACE
  -Wall -Wextra -Wshadow -Wconversion -Wno-sign-conversion -Wnon-virtual-dtor -Woverloaded-virtual)
target_compile_definitions(quillary_options INTERFACE
  QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_FOREACH)
if(QUILLARY_SANITIZE)
  target_compile_options(quillary_options INTERFACE -fsanitize=${QUILLARY_SANITIZE} -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  target_link_options(quillary_options INTERFACE -fsanitize=${QUILLARY_SANITIZE})
endif()

# quillary_library(name SOURCES file... DEPENDS target... [PRIVATE target...] [PRECOMPILED set])
# Headers are included as "folder/File.h". DEPENDS are the folders and libraries its headers show, PRIVATE those that
# only its bodies use.
function(quillary_library name)
  cmake_parse_arguments(arg "" "PRECOMPILED" "SOURCES;DEPENDS;PRIVATE" ${ARGN})
  add_library(quillary_${name} STATIC ${arg_SOURCES})
  target_include_directories(quillary_${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(quillary_${name} PUBLIC quillary_options ${arg_DEPENDS} PRIVATE ${arg_PRIVATE})
  if(arg_PRECOMPILED)
    quillary_precompiled(quillary_${name} ${arg_PRECOMPILED})
  endif()
endfunction()

# quillary_test(name SOURCES file... DEPENDS target... [PRECOMPILED set])
# One GoogleTest program; CTest runs it whole, under its name, without a display.
function(quillary_test name)
  cmake_parse_arguments(arg "" "PRECOMPILED" "SOURCES;DEPENDS" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE quillary_options quillary_test_support ${arg_DEPENDS})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  if(arg_PRECOMPILED)
    quillary_precompiled(${name} ${arg_PRECOMPILED})
  endif()
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 300 ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;LANGUAGE=")
endfunction()
