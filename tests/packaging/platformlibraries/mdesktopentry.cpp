// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "mdesktopentry.h"

#include <QDebug>

MDesktopEntry::MDesktopEntry(const QString &fileName)
{
    qInfo("platform: MDesktopEntry %s", qUtf8Printable(fileName));
}

bool MDesktopEntry::contains(const QString &) const
{
    return true;
}

QString MDesktopEntry::value(const QString &) const
{
    return QStringLiteral("/platform.apk");
}

// There are never any keys to release.
void MDesktopEntry::Release::operator()(GKeyFile *) const {}
