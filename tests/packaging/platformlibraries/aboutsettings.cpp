// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "aboutsettings.h"

AboutSettings::AboutSettings(QObject *parent)
    : QObject(parent)
{
}

QString AboutSettings::baseOperatingSystemName() const
{
    return QStringLiteral("Platform OS");
}
