// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "literals.h"
#include "waitfor.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>

/**
 * Calls a peer and waits for its answer. All messages that the process has sent
 * to the peer before have arrived then, and all that the peer has sent before
 * have been delivered to the process's objects. False when the peer does not
 * answer.
 */
inline bool roundTrip(const QDBusConnection &bus, const QString &service)
{
    const QDBusMessage ping = QDBusMessage::createMethodCall(service, "/"_s, "org.freedesktop.DBus.Peer"_s, "Ping"_s);
    const bool answered = bus.call(ping, QDBus::Block, WaitLimit).type() == QDBusMessage::ReplyMessage;
    QCoreApplication::processEvents();
    return answered;
}
