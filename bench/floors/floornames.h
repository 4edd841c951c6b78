// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

/**
 * Where floors are found on the session bus: the service's path and interface
 * under a name of their own, so that both can run side by side.
 */
namespace FloorNames {
inline const QString Service = QStringLiteral("org.velmoraos.installationfloor");
inline const QString Path = QStringLiteral("/org/velmoraos/installationhandler");
}
