# SPDX-License-Identifier: Apache-2.0
# Read by cpack before each kind of package: the archive gets papers of its own.

if(NOT CPACK_GENERATOR STREQUAL "DEB")
    set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_CURRENT_LIST_DIR}/AddPapers.cmake")
endif()
