// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "installationerror.h"

#include <QtGlobal>
#include <QByteArray>
#include <QCoreApplication>
#include <QStringList>

namespace {

QString errorCode(const QString &errorName)
{
    return errorName.contains(QLatin1Char('.')) ? errorName.split(QLatin1Char('.')).constLast() : errorName;
}

}

QString InstallationError::describe(const QString &errorName)
{
    const QString code = errorCode(errorName);
    const QByteArray id = "zarn_installation_error_desc_" + code.toUtf8();
    const QString description = qtTrId(id.constData(), -1);
    // Two calls, and no %1 in the pattern: a %1 in the description receives the
    // code (Known behaviour 66).
    return QStringLiteral("%2 (code: %3)").arg(description).arg(code); // clazy:exclude=qstring-arg
}
