// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "roundtrip.h"

#include <QCoreApplication>
#include <QDBusMessage>

bool roundTrip(const QDBusConnection &bus, const QString &service)
{
    const QDBusMessage ping = QDBusMessage::createMethodCall(
            service, QStringLiteral("/"), QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"));
    const bool answered = bus.call(ping, QDBus::Block, 5000).type() == QDBusMessage::ReplyMessage;
    QCoreApplication::processEvents();
    return answered;
}
