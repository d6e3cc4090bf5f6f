# SPDX-License-Identifier: Apache-2.0
# Builds for 32-bit ARM boards with hard-float registers, against the libraries in the folder CMAKE_SYSROOT, and runs
# what was built under an emulator of them. packaging/arm/test.sh makes such a folder and uses this file.

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR armv7l)

set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
# No notes on what compilers older than GCC 7.1 would have passed differently.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm-static -L "${CMAKE_SYSROOT}")

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_SYSROOT_DIR} "${CMAKE_SYSROOT}")
set(ENV{PKG_CONFIG_LIBDIR} "${CMAKE_SYSROOT}/usr/lib/arm-linux-gnueabihf/pkgconfig:${CMAKE_SYSROOT}/usr/share/pkgconfig")
