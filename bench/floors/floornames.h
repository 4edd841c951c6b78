// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

/** Where the floors are on the session bus: the service's path, under a name of their own, so that both can run. */
namespace FloorNames {
inline const QString Service = QStringLiteral("org.velmoraos.installationfloor");
inline const QString Path = QStringLiteral("/org/velmoraos/installationhandler");
}
