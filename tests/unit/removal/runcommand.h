// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>
#include <QStringList>

/** Runs a program to its end, which has to come within a minute; whether it ends well. Shows what it says. */
bool runCommand(const QString &program, const QStringList &arguments);
