# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause

# The program, the session bus and systemd know the installed files by absolute paths, which begin with /usr. The manual may
# move, by CMAKE_INSTALL_MANDIR. A slash behind the prefix makes no difference.
cmake_path(SET prefix NORMALIZE "${CMAKE_INSTALL_PREFIX}/")
if(CMAKE_INSTALL_PREFIX_INITIALIZED_TO_DEFAULT)
    set(CMAKE_INSTALL_PREFIX /usr CACHE PATH "Where the files are installed: /usr, because their paths are fixed" FORCE)
elseif(NOT prefix STREQUAL "/usr/")
    message(FATAL_ERROR "CMAKE_INSTALL_PREFIX is \"${CMAKE_INSTALL_PREFIX}\". It has to be /usr, because the paths of the "
        "installed files are fixed in the program. To install into another root, set DESTDIR.")
endif()

include(GNUInstallDirs)
