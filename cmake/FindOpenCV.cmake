# OpenCV by its parts: Debian's package of each part has headers and library, but neither CMake nor pkg-config files.
# find_package(OpenCV REQUIRED COMPONENTS core imgproc) gives the targets OpenCV::core and OpenCV::imgproc.
include(FindPackageHandleStandardArgs)

find_path(OpenCV_INCLUDE_DIR opencv2/core.hpp PATH_SUFFIXES opencv4)
foreach(part ${OpenCV_FIND_COMPONENTS})
  find_library(OpenCV_${part}_LIBRARY opencv_${part})
  if(OpenCV_INCLUDE_DIR AND OpenCV_${part}_LIBRARY)
    set(OpenCV_${part}_FOUND TRUE)
    if(NOT TARGET OpenCV::${part})
      add_library(OpenCV::${part} UNKNOWN IMPORTED)
      set_target_properties(OpenCV::${part} PROPERTIES
        IMPORTED_LOCATION ${OpenCV_${part}_LIBRARY}
        INTERFACE_INCLUDE_DIRECTORIES ${OpenCV_INCLUDE_DIR})
    endif()
  endif()
endforeach()
find_package_handle_standard_args(OpenCV REQUIRED_VARS OpenCV_INCLUDE_DIR HANDLE_COMPONENTS)
mark_as_advanced(OpenCV_INCLUDE_DIR)
