# SPDX-License-Identifier: Apache-2.0
# Installs the program, builds an app against it from outside, and starts the program with the app.

function(run)
    execute_process(COMMAND ${ARGV} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${ARGV}: ${result}\n${output}")
    endif()
endfunction()

file(REMOVE_RECURSE "${SCRATCH}")
set(prefix "${SCRATCH}/prefix")
run("${CMAKE_COMMAND}" --install "${PROGRAM_BUILD}" --prefix "${prefix}")
run("${CMAKE_COMMAND}" -S "${APP_SOURCE}" -B "${SCRATCH}/app" -G Ninja "-DCMAKE_PREFIX_PATH=${prefix}"
    -DCMAKE_BUILD_TYPE=Release "-DCMAKE_INSTALL_PREFIX=${prefix}")
run("${CMAKE_COMMAND}" --build "${SCRATCH}/app")
run("${CMAKE_COMMAND}" --install "${SCRATCH}/app")

file(GLOB_RECURSE app "${prefix}/FirstApp.so" "${prefix}/*/FirstApp.so")
list(LENGTH app count)
if(NOT count EQUAL 1)
    message(FATAL_ERROR "FirstApp.so was installed ${count} times")
endif()
get_filename_component(program_folder "${app}" DIRECTORY)
if(NOT EXISTS "${program_folder}/VYRDashboard")
    message(FATAL_ERROR "The app does not lie beside the program but in ${program_folder}")
endif()

# The program makes the app current and writes its name into the settings file as soon as it starts.
file(WRITE "${program_folder}/settings/DashboardSettings.cfg"
    "AppConfig : { Application : { UseDarkSkin = false; CurrentApp = \"Frame Counter\"; }; };")
execute_process(COMMAND "${prefix}/bin/vyr-dashboard" TIMEOUT 5 OUTPUT_QUIET ERROR_VARIABLE errors)
file(READ "${program_folder}/settings/DashboardSettings.cfg" settings)
if(NOT settings MATCHES "Frame Counter" OR NOT settings MATCHES "Binning")
    message(FATAL_ERROR "The program did not start with the app: ${settings}\n${errors}")
endif()
