// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

/**
 * The system bus, which need not be there.
 */
namespace SystemBus {

/** The message of an operation that fails because it is not. */
inline const QString NotConnected = QStringLiteral("Not connected to the system bus");

}
