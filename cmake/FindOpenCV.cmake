# SPDX-License-Identifier: Apache-2.0
# Finds modules of OpenCV one by one, since Debian's OpenCV package file comes only with all modules at once, the
# visualization toolkit and a database library among them, of which nothing is needed here.
#
#   find_package(OpenCV REQUIRED COMPONENTS core imgproc)
#
# defines OpenCV::core and OpenCV::imgproc, and OpenCV_VERSION.

find_path(OpenCV_INCLUDE_DIR opencv2/core/version.hpp PATH_SUFFIXES opencv4)

if(OpenCV_INCLUDE_DIR)
    file(STRINGS "${OpenCV_INCLUDE_DIR}/opencv2/core/version.hpp" version_lines
         REGEX "#define CV_VERSION_(MAJOR|MINOR|REVISION) ")
    string(REGEX REPLACE "[^0-9;]" "" version_numbers "${version_lines}")
    string(REPLACE ";" "." OpenCV_VERSION "${version_numbers}")
endif()

foreach(component IN LISTS OpenCV_FIND_COMPONENTS)
    find_library(OpenCV_${component}_LIBRARY opencv_${component})
    if(OpenCV_${component}_LIBRARY)
        set(OpenCV_${component}_FOUND TRUE)
        if(NOT TARGET OpenCV::${component})
            add_library(OpenCV::${component} UNKNOWN IMPORTED)
            set_target_properties(OpenCV::${component} PROPERTIES
                IMPORTED_LOCATION "${OpenCV_${component}_LIBRARY}"
                INTERFACE_INCLUDE_DIRECTORIES "${OpenCV_INCLUDE_DIR}")
        endif()
    endif()
endforeach()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OpenCV
    REQUIRED_VARS OpenCV_INCLUDE_DIR
    VERSION_VAR OpenCV_VERSION
    HANDLE_COMPONENTS)
