# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause

# Catalogues of translations. The target "translations" compiles all of them.
#
# cmake --build <build folder> --target update-translations: updates all catalogues from the texts in the code and in the
# QML. It marks new texts as "unfinished" for the translators; the tests fail until they are translated.

set(VELMORA_LANGUAGES
    ar bg bn ca cs da de el en_GB es et fa fi fr fr_CA he hi hr hu id it ja ko lt lv ms nb nl pl pt pt_BR ro ru sk sl sr sv th
    tr uk vi zh_CN zh_TW)

add_custom_target(translations ALL)
add_custom_target(update-translations)

# add_catalogues(<name> <pattern>...)
#
# Compiles and installs the catalogues <name>_eng_en.ts and <name>-<language>.ts of the current folder. The patterns say which
# files have the texts.
function(add_catalogues name)
    set(catalogues ${name}_eng_en.ts)
    foreach(language IN LISTS VELMORA_LANGUAGES)
        list(APPEND catalogues ${name}-${language}.ts)
    endforeach()

    set(compiled "")
    foreach(catalogue IN LISTS catalogues)
        string(REGEX REPLACE "ts$" "qm" output "${catalogue}")
        add_custom_command(OUTPUT "${output}"
            COMMAND Qt5::lrelease -silent -idbased "${CMAKE_CURRENT_SOURCE_DIR}/${catalogue}" -qm "${output}"
            DEPENDS "${catalogue}"
            VERBATIM)
        list(APPEND compiled "${CMAKE_CURRENT_BINARY_DIR}/${output}")
    endforeach()
    add_custom_target(translations-${name} DEPENDS ${compiled})
    add_dependencies(translations translations-${name})
    install(FILES ${compiled} DESTINATION share/translations)

    add_custom_target(update-translations-${name}
        COMMAND "${CMAKE_COMMAND}" "-DLUPDATE=$<TARGET_FILE:Qt5::lupdate>" "-DCATALOGUES=${catalogues}"
            "-DSOURCES=${ARGN}" -P "${CMAKE_SOURCE_DIR}/cmake/UpdateCatalogues.cmake"
        WORKING_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}"
        VERBATIM)
    add_dependencies(update-translations update-translations-${name})
endfunction()
