// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "commandline.h"

#include <QElapsedTimer>

/** Does what a command line asks for, and returns the exit status. clock: began when the program started. */
int runProgram(const CommandLine &commandLine, QElapsedTimer clock);
