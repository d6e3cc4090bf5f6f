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

# vyr_add_app(NAME SOURCES file... [LIBRARIES target...])
#
# Builds NAME.so, an app, and installs it beside the program, which looks for *App.so there: NAME must end in App.
# Sources may hold Qt meta-objects and resources.
function(vyr_add_app name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES")
    if(NOT name MATCHES "App$")
        message(FATAL_ERROR
            "vyr_add_app(${name}): the name must end in App, since the program looks for files named *App.so.")
    endif()
    if(arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR
            "vyr_add_app(${name}): cannot make sense of ${arg_UNPARSED_ARGUMENTS}. "
            "Expected: vyr_add_app(${name} SOURCES file... [LIBRARIES target...])")
    endif()
    if(NOT arg_SOURCES)
        message(FATAL_ERROR "vyr_add_app(${name}): no SOURCES.")
    endif()
    add_library(${name} MODULE ${arg_SOURCES})
    set_target_properties(${name} PROPERTIES
        PREFIX ""
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
    target_compile_features(${name} PRIVATE cxx_std_17)
    target_link_libraries(${name} PRIVATE VYRApps ${arg_LIBRARIES})
    host_use_qt_generators(${name})
    host_runs_beside_program(${name})
    install(TARGETS ${name} LIBRARY DESTINATION "${VYR_INSTALL_DIR}")
    set_property(GLOBAL APPEND PROPERTY VYR_APPS ${name}) # for who builds several
endfunction()
