# SPDX-License-Identifier: Apache-2.0
# Builds and installs the app NAME as its author does, with nothing but the installed files: even its sources are copied
# out of the tree.

include("${CMAKE_CURRENT_LIST_DIR}/Run.cmake")

set(source "${SCRATCH}/${NAME}")
set(build "${SCRATCH}/${NAME}-build")
file(REMOVE_RECURSE "${source}" "${build}")
file(COPY "${APP_SOURCE}/" DESTINATION "${source}")
run("${CMAKE_COMMAND}" -S "${source}" -B "${build}" -G Ninja "-DCMAKE_PREFIX_PATH=${SCRATCH}/prefix"
    -DCMAKE_BUILD_TYPE=Release "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Werror")
run("${CMAKE_COMMAND}" --build "${build}")
run("${CMAKE_COMMAND}" --install "${build}")

file(GLOB_RECURSE app "${SCRATCH}/prefix/${NAME}.so")
list(LENGTH app count)
if(NOT count EQUAL 1)
    message(FATAL_ERROR "${NAME}.so was installed ${count} times")
endif()
get_filename_component(program_folder "${app}" DIRECTORY)
if(NOT EXISTS "${program_folder}/VYRDashboard")
    message(FATAL_ERROR "The app does not lie beside the program but in ${program_folder}")
endif()
