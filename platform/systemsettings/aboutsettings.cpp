// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "aboutsettings.h"

#include <glib.h>

AboutSettings::AboutSettings(QObject *parent)
    : QObject(parent)
{
}

QString AboutSettings::baseOperatingSystemName() const
{
    g_autofree gchar *name = g_get_os_info(G_OS_INFO_KEY_NAME);
    return QString::fromUtf8(name);
}
