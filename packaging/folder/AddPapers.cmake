# SPDX-License-Identifier: Apache-2.0
# Puts README.txt and the licence into the folder that cpack is about to pack. Which packages of Debian the folder needs
# is read from the files in it; without Debian's tools, on another distribution, the text names the libraries instead.

cmake_minimum_required(VERSION 3.25)

# The packages with the libraries that the files are linked with, by name; empty where that cannot be told.
function(find_needed_packages result)
    set(${result} "" PARENT_SCOPE)
    find_program(SHLIBDEPS_PROGRAM dpkg-shlibdeps)
    if(NOT SHLIBDEPS_PROGRAM)
        return()
    endif()
    set(scratch "${CPACK_TOPLEVEL_DIRECTORY}/shlibdeps")
    file(WRITE "${scratch}/debian/control" "Source: vyr-dashboard\n\nPackage: vyr-dashboard\nArchitecture: any\n")
    execute_process(
        COMMAND "${SHLIBDEPS_PROGRAM}" --ignore-missing-info "-l${program_folder}" -O ${ARGN}
        WORKING_DIRECTORY "${scratch}"
        OUTPUT_VARIABLE dependencies
        ERROR_QUIET
        COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX REPLACE "^shlibs:Depends=|\n| *\\([^)]*\\)| *\\|[^,]*" "" names "${dependencies}")
    string(REPLACE ", " ";" names "${names}")
    list(REMOVE_DUPLICATES names)
    list(JOIN names " " names)
    set(${result} "${names}" PARENT_SCOPE)
endfunction()

file(GLOB_RECURSE program "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/VYRDashboard")
get_filename_component(program_folder "${program}" DIRECTORY)
file(GLOB libraries "${program_folder}/*.so")
find_needed_packages(packages "${program}" ${libraries})
if(packages)
    # And what the Debian package brings along without being linked with it.
    string(REPLACE "," "" recommended "${CPACK_DEBIAN_PROGRAM_PACKAGE_RECOMMENDS}")
    cmake_host_system_information(RESULT system QUERY DISTRIB_PRETTY_NAME)
    set(needs "On ${system} it needs packages that this line installs:\n\n    sudo apt-get install ${packages} ${recommended}")
else()
    set(needs "It needs Qt 5.15, libconfig++, xdg-open for the manual, and OpenCV 4 to play back recordings.")
endif()
cmake_path(RELATIVE_PATH program_folder BASE_DIRECTORY "${CPACK_TEMPORARY_INSTALL_DIRECTORY}")
configure_file("${CMAKE_CURRENT_LIST_DIR}/README.txt.in" "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/README.txt" @ONLY)
file(COPY "${CPACK_RESOURCE_FILE_LICENSE}" DESTINATION "${CPACK_TEMPORARY_INSTALL_DIRECTORY}")
