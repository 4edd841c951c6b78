# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause

# The same source gives the same files, wherever it is built: nothing names the folders of the source and of the build. A
# build folder inside of the source has to come last, because the last map that fits is used.
set(VELMORA_PREFIX_MAPS "-ffile-prefix-map=${CMAKE_SOURCE_DIR}=." "-ffile-prefix-map=${CMAKE_BINARY_DIR}=.")
add_compile_options(${VELMORA_PREFIX_MAPS})
# With link-time optimisation GCC compiles once more when it links.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_link_options(${VELMORA_PREFIX_MAPS})
endif()

# Without it moc names the headers by the way from the build folder to them.
set(CMAKE_AUTOMOC_PATH_PREFIX ON)
