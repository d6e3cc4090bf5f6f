# SPDX-License-Identifier: Apache-2.0
# Texts in other languages, built into what shows them.

# host_add_translations(TARGET NAME...)
#
# Compiles translations/NAME.ts and puts it into a program or app, as the resource ":/translations/NAME.qm" that
# loadTranslation() of <apps/Translation.h> looks for. Without Qt's Linguist tools nothing is added, and texts are
# English. Called from the folder of the target.
function(host_add_translations target)
    if(NOT Qt5LinguistTools_FOUND)
        return()
    endif()
    set(files "")
    foreach(name IN LISTS ARGN)
        qt5_add_translation(compiled "${PROJECT_SOURCE_DIR}/translations/${name}.ts")
        string(APPEND files "    <file alias=\"${name}.qm\">${CMAKE_CURRENT_BINARY_DIR}/${name}.qm</file>\n")
    endforeach()
    set(resources "${CMAKE_CURRENT_BINARY_DIR}/${target}_translations.qrc")
    file(CONFIGURE OUTPUT "${resources}"
        CONTENT "<!DOCTYPE RCC><RCC version=\"1.0\">\n<qresource prefix=\"/translations\">\n@files@</qresource>\n</RCC>\n"
        @ONLY)
    # Not by AUTORCC, which would want to see the files before they are made.
    qt5_add_resources(sources "${resources}")
    target_sources(${target} PRIVATE ${sources})
endfunction()
