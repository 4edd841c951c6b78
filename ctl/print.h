// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

#include <cstdio>

/** Prints a line as UTF-8, and at once. */
void printLine(std::FILE *stream, const QString &line);

/** The name of the program before an error that concerns no single file or package. */
void printError(const QString &text);

/** A text that cannot act on a terminal: control characters have become escapes. */
QString printable(const QString &text);

/** The same, and on one line: line breaks have become blanks. */
QString onOneLine(const QString &text);
