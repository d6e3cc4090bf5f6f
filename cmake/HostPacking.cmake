# SPDX-License-Identifier: Apache-2.0
# What cpack makes: two Debian packages, the program and what app authors need; and one archive with all of it in a
# folder that runs wherever it is unpacked.

set(CPACK_PACKAGE_NAME vyr-dashboard)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}") # all four parts of it
set(CPACK_PACKAGE_VENDOR "VYR Technologies")
set(CPACK_PACKAGE_CONTACT "VYR Technologies <dashboard@vyrtech.com>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_PACKAGE_HOMEPAGE_URL "https://vyrtech.com/")
set(CPACK_PACKAGE_FILE_NAME "vyr-dashboard-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}")
set(CPACK_RESOURCE_FILE_LICENSE "${PROJECT_SOURCE_DIR}/LICENSE")
set(CPACK_GENERATOR DEB TGZ)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PROJECT_CONFIG_FILE "${PROJECT_SOURCE_DIR}/packaging/folder/CpackSettings.cmake")

# Whatever the mask of whoever packs.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME vyr-dashboard)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SHLIBDEPS ON)
# What opens the manual, and the texts of Qt's own dialogs in other languages than English.
set(CPACK_DEBIAN_PROGRAM_PACKAGE_RECOMMENDS "qttranslations5-l10n, xdg-utils")
set(CPACK_COMPONENT_PROGRAM_DESCRIPTION
"host for USB stereo cameras and the apps that use them
VYR Dashboard opens a USB stereo camera of the VYR family, shows its two
pictures live, controls the camera, and runs apps: plug-ins that process the
camera's frames and show their results in the window.
.
A simulated camera comes with it, which can also play back recorded footage.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME vyr-dashboard-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SOURCE vyr-dashboard)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "vyr-dashboard (= ${PROJECT_VERSION}), qtbase5-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "cmake, g++, make")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
"headers to build apps for VYR Dashboard
VYR Dashboard opens a USB stereo camera of the VYR family and runs apps that
process its frames.
.
This package has the headers and the CMake package with which such apps are
built, and an example.")

set(maintainer_scripts "")
foreach(script IN ITEMS postinst postrm)
    configure_file("packaging/debian/${script}.in" "packaging/debian/${script}" @ONLY
        FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
    list(APPEND maintainer_scripts "${CMAKE_CURRENT_BINARY_DIR}/packaging/debian/${script}")
endforeach()
set(CPACK_DEBIAN_PROGRAM_PACKAGE_CONTROL_EXTRA "${maintainer_scripts}")

include(CPack)
