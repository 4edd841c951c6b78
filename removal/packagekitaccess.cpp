// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "packagekitaccess.h"

#include <QDBusConnection>

bool PackageKitAccess::isPossible()
{
    return QDBusConnection::systemBus().isConnected();
}
