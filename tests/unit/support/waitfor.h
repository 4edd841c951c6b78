// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "texts.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QTest>

/** No wait takes longer, in milliseconds. A busy machine needs some seconds for what is usually done at once. */
constexpr int WaitLimit = 20000;

/** Runs the event loop until a condition holds. When that takes too long, says what it waited for. */
template<typename Condition>
bool waitFor(Condition condition, const char *what)
{
    const bool holds = QTest::qWaitFor(condition, WaitLimit);
    if (!holds) {
        qCritical("Waited %d milliseconds in vain for %s", WaitLimit, what);
    }
    return holds;
}

/**
 * Calls a peer and waits for its answer. All messages that the process has sent to the peer before have arrived then,
 * and all that the peer has sent before have been delivered to the process's objects. False when the peer does not
 * answer.
 */
inline bool roundTrip(const QDBusConnection &bus, const QString &service)
{
    const QDBusMessage ping = QDBusMessage::createMethodCall(service, "/"_s, "org.freedesktop.DBus.Peer"_s, "Ping"_s);
    const bool answered = bus.call(ping, QDBus::Block, WaitLimit).type() == QDBusMessage::ReplyMessage;
    // Qt announces an answer that came before its watcher was made in two steps.
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    return answered;
}
