// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDBusConnection>
#include <QString>

/**
 * The system bus. The service also runs without one; every operation that needs
 * it fails then.
 */
namespace SystemBus {

/** Whether the process is connected to the system bus now. */
inline bool isConnected()
{
    return QDBusConnection::systemBus().isConnected();
}

/** The error message of an operation that fails because there is no system bus. */
inline const QString NotConnected = QStringLiteral("Not connected to the system bus");

}
