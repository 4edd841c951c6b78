// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QMetaObject>
#include <QStringList>

/** The methods that a class adds, in their order, for example "signal failure(QString details)", "private slot stop()".
 */
QStringList methodsOf(const QMetaObject &type);
