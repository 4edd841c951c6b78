# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause

# platform_library(<library> <class>)
#
# Offers the target Platform::<class>, made as VELMORA_PLATFORM says: from the machine's <library>, which pkg-config knows,
# or as the static library built in the folder <library> beside this file.
function(platform_library library class)
    if(NOT VELMORA_PLATFORM STREQUAL "portable")
        pkg_check_modules(PLATFORM_${class} QUIET GLOBAL IMPORTED_TARGET ${library})
    endif()
    if(TARGET PkgConfig::PLATFORM_${class})
        message(STATUS "Platform::${class}: ${library} ${PLATFORM_${class}_VERSION} of this machine")
        add_library(Platform::${class} ALIAS PkgConfig::PLATFORM_${class})
    elseif(VELMORA_PLATFORM STREQUAL "system")
        set_property(GLOBAL APPEND PROPERTY VELMORA_MISSING_LIBRARIES ${library})
    else()
        message(STATUS "Platform::${class}: portable implementation")
        add_subdirectory(${library})
        add_library(Platform::${class} ALIAS ${library})
    endif()
endfunction()

# Names all missing libraries at once, so that a packager learns of them in one go.
function(require_platform_libraries)
    get_property(missing GLOBAL PROPERTY VELMORA_MISSING_LIBRARIES)
    if(missing)
        list(JOIN missing ", " missing)
        message(FATAL_ERROR "VELMORA_PLATFORM is \"system\", but pkg-config does not know ${missing}")
    endif()
endfunction()
