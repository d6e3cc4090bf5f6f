# SPDX-License-Identifier: Apache-2.0
# Makes the archive and looks for what whoever unpacks it is to read.

file(REMOVE_RECURSE "${SCRATCH}")
execute_process(
    COMMAND "${CPACK}" --config "${PROGRAM_BUILD}/CPackConfig.cmake" -G TGZ -B "${SCRATCH}"
    OUTPUT_QUIET
    COMMAND_ERROR_IS_FATAL ANY)
file(GLOB archive "${SCRATCH}/*.tar.gz")
file(ARCHIVE_EXTRACT INPUT "${archive}" DESTINATION "${SCRATCH}/unpacked")
file(GLOB folder "${SCRATCH}/unpacked/*")

file(READ "${folder}/README.txt" readme)
if(NOT readme MATCHES "xdg-(utils|open)")
    message(SEND_ERROR "README.txt does not name what opens the manual:\n${readme}")
endif()

foreach(paper IN ITEMS LICENSE share/doc/vyr-dashboard/copyright)
    string(FIND "${readme}" "${paper}" place)
    if(place EQUAL -1 OR NOT EXISTS "${folder}/${paper}")
        message(SEND_ERROR "README.txt does not name ${paper}, or it is not there")
    endif()
endforeach()
file(SHA256 "${LICENSE}" expected)
file(SHA256 "${folder}/LICENSE" licence)
if(NOT licence STREQUAL expected)
    message(SEND_ERROR "LICENSE is another one")
endif()
