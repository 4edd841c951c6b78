// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QElapsedTimer>
#include <QJsonObject>
#include <QLatin1String>

/** Prints an object on a line, with the keys of all objects. clock: began when the program started. */
void printJsonLine(QLatin1String event, QJsonObject object, QElapsedTimer clock);
