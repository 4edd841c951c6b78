// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "packagekitsignals.h"

#include <QDBusConnection>
#include <QDBusMessage>

namespace {

void addMatchRule()
{
    QDBusMessage call = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("AddMatch"));
    call << QStringLiteral("type='signal',sender='org.freedesktop.PackageKit',"
                           "interface='org.freedesktop.PackageKit.Transaction'");
    QDBusConnection::systemBus().send(call);
}

}

void subscribeToPackageKitSignals()
{
    static bool subscribed = false;
    if (!subscribed) {
        addMatchRule();
        subscribed = true;
    }
}
