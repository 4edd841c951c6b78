// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "commandline.h"
#include "report.h"
#include "subject.h"

#include <QList>

/**
 * The files and packages of a command line, each once, in their order. The list is empty if there are problems with
 * files, all of which have been reported then.
 */
QList<Subject> findSubjects(const CommandLine &commandLine, Report *report);
