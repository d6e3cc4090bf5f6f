# SPDX-License-Identifier: Apache-2.0
# The font faces that are built into the program under the names of the Segoe UI files: the files themselves when
# VYR_FONT_DIR has them, otherwise faces of Open Sans, which was drawn with the same proportions in mind and may be
# passed on.

# The names, each with the face of Open Sans that stands in for it. Open Sans has no semilight weight.
set(HOST_FONT_FACES
    "segoeui.ttf=OpenSans-Regular.ttf"
    "segoeuib.ttf=OpenSans-Bold.ttf"
    "segoeuii.ttf=OpenSans-Italic.ttf"
    "segoeuisl.ttf=OpenSans-Light.ttf"
    "segoeuiz.ttf=OpenSans-BoldItalic.ttf"
    "seguili.ttf=OpenSans-LightItalic.ttf"
    "seguisb.ttf=OpenSans-Semibold.ttf"
    "seguisbi.ttf=OpenSans-SemiboldItalic.ttf"
    "seguisli.ttf=OpenSans-LightItalic.ttf")

# Writes a resource file with the faces into the build tree and gives its path.
function(host_font_resources result)
    if(NOT VYR_FONT_DIR)
        find_path(OpenSans_DIR OpenSans-Regular.ttf
            PATHS /usr/share/fonts /usr/local/share/fonts
            PATH_SUFFIXES truetype/open-sans open-sans TTF truetype
            NO_DEFAULT_PATH)
        mark_as_advanced(OpenSans_DIR)
        if(NOT OpenSans_DIR)
            message(FATAL_ERROR "Open Sans is not installed (package fonts-open-sans). "
                "Install it, or name a folder with the Segoe UI files in VYR_FONT_DIR.")
        endif()
    endif()
    set(files "")
    foreach(face IN LISTS HOST_FONT_FACES)
        string(REPLACE "=" ";" face "${face}")
        list(GET face 0 name)
        if(VYR_FONT_DIR)
            set(path "${VYR_FONT_DIR}/${name}")
        else()
            list(GET face 1 substitute)
            set(path "${OpenSans_DIR}/${substitute}")
        endif()
        if(NOT EXISTS "${path}")
            message(FATAL_ERROR "The font file ${path} is missing.")
        endif()
        string(APPEND files "    <file alias=\"${name}\">${path}</file>\n")
    endforeach()
    set(resources "${CMAKE_CURRENT_BINARY_DIR}/fonts.qrc")
    file(CONFIGURE OUTPUT "${resources}"
        CONTENT "<!DOCTYPE RCC><RCC version=\"1.0\">\n<qresource prefix=\"/\">\n@files@</qresource>\n</RCC>\n" @ONLY)
    # Uncompressed, so that the one face in use is read where it lies in the program.
    set_property(SOURCE "${resources}" PROPERTY AUTORCC_OPTIONS "--no-compress")
    set(${result} "${resources}" PARENT_SCOPE)
endfunction()
