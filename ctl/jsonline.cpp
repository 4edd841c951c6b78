// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "jsonline.h"

#include "print.h"

#include <QJsonDocument>

void printJsonLine(QLatin1String event, QJsonObject object, QElapsedTimer clock)
{
    object.insert(QStringLiteral("event"), event);
    object.insert(QStringLiteral("elapsed"), static_cast<double>(clock.elapsed()) / 1000);
    printLine(stdout, QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
}
