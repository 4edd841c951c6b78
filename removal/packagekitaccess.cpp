// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "packagekitaccess.h"

#include <QDBusConnection>
#include <QDBusMessage>

namespace {

// The library has the bus match some twenty signals for each transaction, and
// the bus takes only 512 such rules from a connection: of about two dozen
// transactions side by side the last would never be heard of. One rule for all
// of them makes up for those that are refused.
void subscribeToAllTransactions(const QDBusConnection &bus)
{
    QDBusMessage subscription = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("AddMatch"));
    subscription << QStringLiteral("type='signal',sender='org.freedesktop.PackageKit',"
                                   "interface='org.freedesktop.PackageKit.Transaction'");
    bus.send(subscription);
}

}

bool PackageKitAccess::prepare()
{
    const QDBusConnection bus = QDBusConnection::systemBus();
    static bool subscribed = false;
    if (bus.isConnected() && !subscribed) {
        subscribeToAllTransactions(bus);
        subscribed = true;
    }
    return bus.isConnected();
}
