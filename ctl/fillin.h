// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>
#include <QStringList>

/**
 * A text with values in the places of %1 and %2. Without catalogues the text is its identifier, which has no such
 * places. The values follow it then.
 */
template<typename... Values>
QString fillIn(const QString &text, const Values &...values)
{
    return text.contains(QLatin1String("%1")) ? text.arg(values...)
                                              : QStringList{text, values...}.join(QLatin1Char(' '));
}
