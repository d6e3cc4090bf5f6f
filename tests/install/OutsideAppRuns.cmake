# SPDX-License-Identifier: Apache-2.0
# Starts the installed program on a CAMERA with the name of the app SAVED in its settings, and looks on until there is
# something to see. The APP must be current then.

set(prefix "${SCRATCH}/prefix")
file(GLOB_RECURSE program "${prefix}/VYRDashboard")
get_filename_component(program_folder "${program}" DIRECTORY)
set(settings_file "${program_folder}/settings/DashboardSettings.cfg")
set(picture "${SCRATCH}/${APP}.png")
file(REMOVE "${picture}")
file(WRITE "${settings_file}" "AppConfig : { Application : { UseDarkSkin = false; CurrentApp = \"${SAVED}\"; }; };")

# The observer ends the program with status 0 when the picture in the main area has moved a few times, and with 1 when
# it has not within a minute. Without a camera it is content with the window.
execute_process(
    COMMAND "${CMAKE_COMMAND}" -E env
        "VYR_SOURCE=${CAMERA}"
        "HOME=${SCRATCH}"
        "XDG_CONFIG_HOME=${SCRATCH}"
        "QT_PLUGIN_PATH=${PROGRAM_BUILD}/tools"
        "QT_QPA_GENERIC_PLUGINS=vyrscreenshot:${picture}"
        "${prefix}/bin/vyr-dashboard"
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result EQUAL 0 OR NOT EXISTS "${picture}")
    message(FATAL_ERROR "Nothing moves in the window: ${result}\n${output}")
endif()

# A saved app that is not there leaves its place to the first that is, whose name the program then writes down.
file(READ "${settings_file}" settings)
if(NOT settings MATCHES "CurrentApp = \"${APP}\"" OR NOT settings MATCHES "Binning")
    message(FATAL_ERROR "The program did not start with the app: ${settings}\n${output}")
endif()
