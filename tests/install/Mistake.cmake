# SPDX-License-Identifier: Apache-2.0
# Configures an app with a mistake in it: CODE behind find_package(), a VERSION asked for, an OPTION of CMake. That must
# fail, with the EXPECTED words.

if(NOT VERSION)
    set(VERSION 1.0)
endif()
string(MD5 name "${CODE}${VERSION}${OPTION}")
set(source "${SCRATCH}/mistake-${name}")
file(REMOVE_RECURSE "${source}")
file(WRITE "${source}/CMakeLists.txt"
    "cmake_minimum_required(VERSION 3.25)\n"
    "project(Mistake LANGUAGES CXX)\n"
    "find_package(VYRDashboard ${VERSION} REQUIRED)\n"
    "${CODE}\n")
execute_process(
    COMMAND "${CMAKE_COMMAND}" -S "${source}" -B "${source}/build" -G Ninja "-DCMAKE_PREFIX_PATH=${SCRATCH}/prefix"
        ${OPTION}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(result EQUAL 0)
    message(FATAL_ERROR "The mistake went unnoticed:\n${output}")
endif()
# CMake wraps its messages.
string(REGEX REPLACE "[ \n]+" " " output "${output}")
if(NOT output MATCHES "${EXPECTED}")
    message(FATAL_ERROR "The author is not told \"${EXPECTED}\":\n${output}")
endif()
