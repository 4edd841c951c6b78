// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// The floor of a removal by name, as a service of its own.

#include "bareremoval.h"
#include "floornames.h"

#include <QCoreApplication>
#include <QDBusConnection>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    BareRemoval removal;
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.registerObject(FloorNames::Path, &removal, QDBusConnection::ExportAllContents);
    return bus.registerService(FloorNames::Service) ? QCoreApplication::exec() : 1;
}
