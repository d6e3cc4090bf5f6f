# SPDX-License-Identifier: Apache-2.0
# Makes the Debian packages and has them judged by lintian.

if(NOT LINTIAN OR NOT SHLIBDEPS)
    message("Skipped: lintian or dpkg-shlibdeps (package dpkg-dev) is not installed")
    return()
endif()

file(REMOVE_RECURSE "${SCRATCH}")
execute_process(
    COMMAND "${CPACK}" --config "${PROGRAM_BUILD}/CPackConfig.cmake" -G DEB -B "${SCRATCH}"
    OUTPUT_QUIET
    COMMAND_ERROR_IS_FATAL ANY)
file(GLOB packages "${SCRATCH}/*.deb")
list(LENGTH packages count)
if(NOT count EQUAL 2)
    message(FATAL_ERROR "Not two packages: ${packages}")
endif()
execute_process(
    COMMAND "${LINTIAN}" --allow-root --fail-on error ${packages}
    COMMAND_ERROR_IS_FATAL ANY)
