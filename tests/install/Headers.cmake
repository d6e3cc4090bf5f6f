# SPDX-License-Identifier: Apache-2.0
# Each installed header compiles alone, against the installed tree only.

include("${CMAKE_CURRENT_LIST_DIR}/Run.cmake")

set(source "${SCRATCH}/headers")
file(REMOVE_RECURSE "${source}")
file(GLOB_RECURSE headers RELATIVE "${SCRATCH}/prefix/include/vyr-dashboard"
    "${SCRATCH}/prefix/include/vyr-dashboard/*.h")
list(LENGTH headers count)
if(count LESS 30)
    message(FATAL_ERROR "Only ${count} headers were installed")
endif()

set(sources "")
foreach(header IN LISTS headers)
    string(MAKE_C_IDENTIFIER "${header}" name)
    file(WRITE "${source}/${name}.cpp" "#include <${header}>\n")
    list(APPEND sources "${name}.cpp")
endforeach()
list(JOIN sources " " sources)
file(WRITE "${source}/CMakeLists.txt"
    "cmake_minimum_required(VERSION 3.25)\n"
    "project(Headers LANGUAGES CXX)\n"
    "find_package(VYRDashboard 1.0 REQUIRED)\n"
    "add_library(Headers OBJECT ${sources})\n"
    "target_link_libraries(Headers PRIVATE VYRApps VYRHeaders)\n")
run("${CMAKE_COMMAND}" -S "${source}" -B "${source}/build" -G Ninja "-DCMAKE_PREFIX_PATH=${SCRATCH}/prefix"
    "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Werror")
run("${CMAKE_COMMAND}" --build "${source}/build" -- -k 0)
