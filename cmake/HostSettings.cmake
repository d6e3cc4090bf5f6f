# SPDX-License-Identifier: Apache-2.0
# Build options and the settings that every target shares.

include(CTest)

option(VYR_WARNINGS_AS_ERRORS "Treat compiler warnings as errors (our presets do; packagers need not)" OFF)
option(VYR_BUILD_BENCHMARKS "Build the benchmarks, with the peers that are installed (bench/README.md)" OFF)
set(VYR_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them; empty for none")
set(VYR_FONT_DIR "" CACHE PATH "Folder with the real Segoe UI faces; empty to embed Open Sans under their names")

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

# Everything that runs lands in one folder and finds its libraries beside itself, so that the build tree
# runs exactly as an installed tree does, and a camera library dropped into the folder is the one in use.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_INSTALL_RPATH "$ORIGIN")
add_link_options("LINKER:--enable-new-dtags")
# What is installed belongs to the program unless it says COMPONENT development: what is needed to build apps.
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME program)
set(VYR_INSTALL_DIR "${CMAKE_INSTALL_LIBDIR}/vyr-dashboard")
set(VYR_INSTALL_INCLUDE_DIR "${CMAKE_INSTALL_INCLUDEDIR}/vyr-dashboard")

set(THREADS_PREFER_PTHREAD_FLAG ON)

# For what looks at files: without these, a 32-bit system cannot at one with a large number or a date after 2038.
set(VYR_LARGE_FILES _FILE_OFFSET_BITS=64 _TIME_BITS=64)

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor)
# Clang's own reading of -Wpedantic, which Qt's logging macros do not follow.
add_compile_options($<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>)
if(VYR_WARNINGS_AS_ERRORS)
    add_compile_options(-Werror)
endif()

if(VYR_SANITIZE)
    add_compile_options(-fsanitize=${VYR_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${VYR_SANITIZE})
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()
