# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause

# Manual pages, which scdoc makes. The target "manual" makes all of them.

find_program(SCDOC scdoc)
if(NOT SCDOC)
    message(STATUS "No manual: scdoc is missing")
endif()

# The pages bear the date of the newest entry in the spec file, or SOURCE_DATE_EPOCH where that is set. Without either scdoc
# takes the day of the build.
set(VELMORA_MANUAL_EPOCH "$ENV{SOURCE_DATE_EPOCH}")
if(SCDOC AND VELMORA_MANUAL_EPOCH STREQUAL "")
    file(STRINGS "${CMAKE_SOURCE_DIR}/packaging/velmora-installationhandler.spec" entry REGEX "^\\* [A-Z]" LIMIT_COUNT 1)
    string(REGEX MATCH "[A-Z][a-z]+ +[0-9]+ [0-9]+" day "${entry}")
    execute_process(COMMAND date --utc "--date=${day}" +%s
        OUTPUT_VARIABLE VELMORA_MANUAL_EPOCH OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
endif()

add_custom_target(manual ALL)

# add_manual(<page>): makes the page, for example "name.1", of the file <page>.scd in the current folder.
function(add_manual page)
    if(NOT SCDOC)
        return()
    endif()
    add_custom_command(OUTPUT ${page}
        COMMAND "${CMAKE_COMMAND}" -E env SOURCE_DATE_EPOCH=${VELMORA_MANUAL_EPOCH}
            "${SCDOC}" < "${CMAKE_CURRENT_SOURCE_DIR}/${page}.scd" > ${page}
        DEPENDS ${page}.scd
        VERBATIM)
    add_custom_target(manual-${page} DEPENDS ${page})
    add_dependencies(manual manual-${page})
    install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${page}" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
endfunction()
