# SPDX-License-Identifier: Apache-2.0

get_target_property(imported QtPropertyBrowser IMPORTED)
if(NOT imported)
    add_host_test(QtPropertyBrowserTest QT
        SOURCES
            ${PROJECT_SOURCE_DIR}/tests/support/WidgetApplicationMain.cpp
            QtPropertyBrowserTest.cpp
        LIBRARIES QtPropertyBrowser)
endif()
