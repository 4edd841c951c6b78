// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <cstdio>

/** The kind of device that a stream of this process leads to. */
namespace Terminal {

/** Whether it is a terminal. */
bool isAt(std::FILE *stream);

/** Whether it is a terminal whose lines can change. */
bool canChangeLines(std::FILE *stream);

/** Whether it is a terminal, and the user wants colours. */
bool hasColours(std::FILE *stream);

/** The width of the terminal, 0 if it is unknown. */
int columns(std::FILE *stream);

}
