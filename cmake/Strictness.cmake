# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause

# How strictly everything is compiled. Warnings become errors where
# CMAKE_COMPILE_WARNING_AS_ERROR is set, which the developers' presets do.

add_compile_options(
    -Wall
    -Wextra
    -Wpedantic
    -Wshadow
    -Wcast-qual
    -Wnon-virtual-dtor
    -Woverloaded-virtual)

add_compile_definitions(
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_FOREACH
    QT_STRICT_ITERATORS
    QT_DEPRECATED_WARNINGS
    QT_DISABLE_DEPRECATED_BEFORE=0x050f00)

# Every library that is loaded costs start-up time; keep those that are used.
add_link_options(-Wl,--as-needed)
