# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause

# cmake -DLUPDATE=<program> "-DCATALOGUES=<file>;..." "-DSOURCES=<pattern>;..." -P UpdateCatalogues.cmake, in the folder of
# the catalogues.

file(GLOB sources ${SOURCES})
execute_process(
    COMMAND "${LUPDATE}" -silent -locations none -no-obsolete ${sources} -ts ${CATALOGUES}
    COMMAND_ERROR_IS_FATAL ANY)

# lupdate removes the license comment.
string(CONCAT licence "<!--\nSPDX-FileCopyrightText: velmora-installationhandler contributors\n"
    "SPDX-License-Identifier: BSD-3-Clause\n-->\n")
foreach(catalogue IN LISTS CATALOGUES)
    file(READ "${catalogue}" text)
    string(REPLACE "<!DOCTYPE TS>\n" "<!DOCTYPE TS>\n${licence}" text "${text}")
    file(WRITE "${catalogue}" "${text}")
endforeach()
