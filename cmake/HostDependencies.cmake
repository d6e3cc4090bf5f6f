# SPDX-License-Identifier: Apache-2.0
# What is installed and called. Everything here is a Debian package; none is downloaded.

find_package(Threads REQUIRED)
find_package(Qt5 5.15 REQUIRED COMPONENTS Core Gui Widgets Network Test)
find_package(Qt5LinguistTools 5.15 QUIET)
find_package(PkgConfig REQUIRED)
pkg_check_modules(LibConfig REQUIRED IMPORTED_TARGET libconfig++)
find_package(OpenCV REQUIRED COMPONENTS calib3d core imgcodecs imgproc videoio)

if(BUILD_TESTING)
    find_package(GTest REQUIRED)
    include(GoogleTest)
endif()

if(VYR_BUILD_BENCHMARKS)
    find_package(benchmark REQUIRED)
endif()
