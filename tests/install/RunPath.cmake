# SPDX-License-Identifier: Apache-2.0
# Everything beside the program looks for its libraries beside itself and nowhere else: an empty element in the path
# would stand for the current folder.

file(GLOB files "${FOLDER}/VYRDashboard" "${FOLDER}/*.so")
list(LENGTH files count)
if(count LESS 6)
    message(FATAL_ERROR "Only ${count} programs and libraries in ${FOLDER}")
endif()
foreach(file IN LISTS files)
    execute_process(COMMAND "${READELF}" -d "${file}" OUTPUT_VARIABLE dynamic COMMAND_ERROR_IS_FATAL ANY)
    if(NOT dynamic MATCHES "\\(RUNPATH\\)[^[]*\\[([^\n]*)\\]")
        message(FATAL_ERROR "${file} has no RUNPATH")
    endif()
    if(NOT CMAKE_MATCH_1 STREQUAL "$ORIGIN")
        message(FATAL_ERROR "${file} has the RUNPATH ${CMAKE_MATCH_1}")
    endif()
endforeach()
