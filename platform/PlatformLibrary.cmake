# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause

# platform_library(<library> <class>)
#
# Offers the target Platform::<class>: the machine's <library> where pkg-config
# knows it, else the static library built in the folder <library> beside this file.
function(platform_library library class)
    pkg_check_modules(PLATFORM_${class} QUIET GLOBAL IMPORTED_TARGET ${library})
    if(PLATFORM_${class}_FOUND)
        message(STATUS "Platform::${class}: ${library} ${PLATFORM_${class}_VERSION} of this machine")
        add_library(Platform::${class} ALIAS PkgConfig::PLATFORM_${class})
    else()
        message(STATUS "Platform::${class}: portable implementation, ${library} is absent")
        add_subdirectory(${library})
        add_library(Platform::${class} ALIAS ${library})
    endif()
endfunction()
