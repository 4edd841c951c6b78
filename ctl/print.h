// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

#include <cstdio>

/** Prints a line as UTF-8, and at once. */
void printLine(std::FILE *stream, const QString &line);

/** The name of the program before an error that concerns no single file or package. */
void printError(const QString &text);

/** A text as one line that cannot act on a terminal: line breaks become blanks, other control characters escapes. */
QString printable(const QString &text);
