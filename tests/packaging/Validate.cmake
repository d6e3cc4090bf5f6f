# SPDX-License-Identifier: Apache-2.0
# Has a tool judge a file. What it says counts, too: several tools complain and succeed.

if(NOT TOOL)
    message("Skipped: ${NAME} is not installed")
    return()
endif()
execute_process(COMMAND "${TOOL}" ${ARGUMENTS} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE complaints)
message("${output}${complaints}")
if(NOT result EQUAL 0 OR complaints OR output MATCHES "(hint|warning|error): ")
    message(FATAL_ERROR "${NAME} complains, and ended with ${result}")
endif()
