# SPDX-License-Identifier: Apache-2.0
# What makes find_package(VYRDashboard) work for the authors of apps, once the program is installed.

include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/VYRDashboard")
configure_package_config_file(cmake/VYRDashboardConfig.cmake.in VYRDashboardConfig.cmake
    INSTALL_DESTINATION "${package_dir}"
    PATH_VARS VYR_INSTALL_DIR
    NO_CHECK_REQUIRED_COMPONENTS_MACRO)
# Authors ask for the interface that they write against; the program's own version tells them nothing.
write_basic_package_version_file(VYRDashboardConfigVersion.cmake
    VERSION "${VYR_INTERFACE_VERSION}"
    COMPATIBILITY SameMajorVersion)
install(FILES
    "${CMAKE_CURRENT_BINARY_DIR}/VYRDashboardConfig.cmake"
    "${CMAKE_CURRENT_BINARY_DIR}/VYRDashboardConfigVersion.cmake"
    cmake/VYRAddApp.cmake
    DESTINATION "${package_dir}"
    COMPONENT development)
install(EXPORT VYRDashboardTargets DESTINATION "${package_dir}" COMPONENT development)
