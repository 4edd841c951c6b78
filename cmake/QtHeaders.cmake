# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause

# Qt's headers take most of the time in which the tests are compiled, so they are read once for all tests.

include_guard(GLOBAL)

set(VELMORA_PRECOMPILED Qt5::DBus Qt5::Quick Qt5::Test)

# precompile_qt_headers()
#
# Precompiles the file qtheaders.h in the current folder, and uses it for all programs and libraries that are made in the
# folders below. To be called after these folders were added.
function(precompile_qt_headers)
    add_library(qtheaders OBJECT qtheaders.cpp qtheaders.h)
    target_link_libraries(qtheaders PRIVATE ${VELMORA_PRECOMPILED})
    target_precompile_headers(qtheaders PRIVATE qtheaders.h)
    reuse_qt_headers("${CMAKE_CURRENT_SOURCE_DIR}")
endfunction()

function(reuse_qt_headers folder)
    get_property(subfolders DIRECTORY "${folder}" PROPERTY SUBDIRECTORIES)
    foreach(subfolder IN LISTS subfolders)
        get_property(targets DIRECTORY "${subfolder}" PROPERTY BUILDSYSTEM_TARGETS)
        foreach(target IN LISTS targets)
            get_target_property(type "${target}" TYPE)
            if(type MATCHES "^(EXECUTABLE|STATIC_LIBRARY)$")
                target_precompile_headers("${target}" REUSE_FROM qtheaders)
                # GCC takes them only where the same macros are defined, which come with the libraries.
                target_link_libraries("${target}" PRIVATE ${VELMORA_PRECOMPILED})
            endif()
        endforeach()
        reuse_qt_headers("${subfolder}")
    endforeach()
endfunction()
