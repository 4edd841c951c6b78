// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "commandline.h"
#include "files.h"

#include <QList>

/** Finds the files and packages of a command line, each once, in their order. */
QList<NamedFile> findSubjects(const CommandLine &commandLine);
