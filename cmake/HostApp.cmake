# SPDX-License-Identifier: Apache-2.0
# How an app is built, inside this tree and outside of it.

# Qt's code generators, on for the targets that use Qt.
function(host_use_qt_generators name)
    set_target_properties(${name} PROPERTIES AUTOMOC ON AUTORCC ON)
endfunction()

# For what lies beside the program: it looks for its libraries there and, unlike with the paths that a build tree adds,
# nowhere else, so that it runs from the build tree exactly as installed.
function(host_runs_beside_program name)
    set_target_properties(${name} PROPERTIES BUILD_WITH_INSTALL_RPATH ON INSTALL_RPATH "$ORIGIN")
endfunction()

# add_host_app(NAME SOURCES file... [LIBRARIES target...])
#
# Builds NAMEApp.so, an app that the host finds beside its executable, and installs it there. Sources may hold Qt
# meta-objects and resources.
function(add_host_app name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES")
    add_library(${name}App MODULE ${arg_SOURCES})
    set_target_properties(${name}App PROPERTIES
        PREFIX ""
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
    target_compile_features(${name}App PRIVATE cxx_std_17)
    target_link_libraries(${name}App PRIVATE VYRApps ${arg_LIBRARIES})
    host_use_qt_generators(${name}App)
    host_runs_beside_program(${name}App)
    install(TARGETS ${name}App LIBRARY DESTINATION "${VYR_INSTALL_DIR}")
endfunction()
