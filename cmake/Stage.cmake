# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause

# cmake -DBUILD=<build folder> -DSTAGE=<folder> -P Stage.cmake: installs the build into a fresh stage.

file(REMOVE_RECURSE "${STAGE}")
file(MAKE_DIRECTORY "${STAGE}")
set(ENV{DESTDIR} "${STAGE}")
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD}" --prefix /usr COMMAND_ERROR_IS_FATAL ANY)
