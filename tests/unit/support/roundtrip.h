// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDBusConnection>
#include <QString>

/**
 * Calls a peer and waits for its answer. Whatever the code under test has sent
 * to the peer before has arrived then, and whatever the peer has sent before has
 * been delivered to the process's objects: what hasn't happened by then, doesn't
 * happen. False when the peer doesn't answer.
 */
bool roundTrip(const QDBusConnection &bus, const QString &service);
