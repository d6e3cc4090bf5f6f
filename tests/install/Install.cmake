# SPDX-License-Identifier: Apache-2.0
# Installs the program.

include("${CMAKE_CURRENT_LIST_DIR}/Run.cmake")

file(REMOVE_RECURSE "${SCRATCH}")
run("${CMAKE_COMMAND}" --install "${PROGRAM_BUILD}" --prefix "${SCRATCH}/prefix")
