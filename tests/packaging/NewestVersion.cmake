# SPDX-License-Identifier: Apache-2.0
# A release that somebody forgot to write down in one of the places where it is told.

function(expect_version file before after)
    file(READ "${PACKAGING}/${file}" text)
    if(NOT text MATCHES "${before}([0-9][0-9.]*)${after}") # the first one, which stands on top
        message(FATAL_ERROR "${file} names no version")
    endif()
    if(NOT CMAKE_MATCH_1 STREQUAL VERSION)
        message(SEND_ERROR "${file} names ${CMAKE_MATCH_1} first, not ${VERSION}")
    endif()
endfunction()

expect_version(../CHANGELOG.md "\n## \\[" "\\]")
expect_version(debian/changelog "vyr-dashboard \\(" "\\)")
expect_version(com.vyrtech.dashboard.metainfo.xml "<release version=\"" "\"")
expect_version(vyr-dashboard.1 "VYR Dashboard " "\"")
