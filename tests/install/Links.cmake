# SPDX-License-Identifier: Apache-2.0
# The links of the installed pages to other files, which lie elsewhere in the tree of the sources.

file(GLOB_RECURSE pages "${FOLDER}/*.md")
if(NOT pages)
    message(FATAL_ERROR "No page was installed in ${FOLDER}")
endif()
foreach(page IN LISTS pages)
    get_filename_component(folder "${page}" DIRECTORY)
    file(READ "${page}" text)
    string(REPLACE "](" "link(" text "${text}") # a bracket alone would keep a list from being one
    string(REGEX MATCHALL "link\\([^) ]+\\)" links "${text}")
    foreach(link IN LISTS links)
        string(REGEX REPLACE "^link\\(|\\)$" "" target "${link}")
        if(NOT target MATCHES "^(https?:|#)" AND NOT EXISTS "${folder}/${target}")
            message(SEND_ERROR "${page}: leads nowhere: ${target}")
        endif()
    endforeach()
endforeach()
