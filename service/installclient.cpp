// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "installclient.h"

#include "busnames.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusInterface>
#include <QDBusMessage>
#include <QDebug>

int requestInstallation(const char *file)
{
    QDBusInterface service(BusNames::InstallationHandler::Service, BusNames::InstallationHandler::Path,
                           BusNames::InstallationHandler::Interface, QDBusConnection::sessionBus());

    // The argument is a plain string, although the service's method takes a list: Known behaviour 1.
    const QDBusError error(service.call(QDBus::Block, QStringLiteral("installFiles"), QString::fromUtf8(file)));
    if (error.isValid()) {
        // Q_FUNC_INFO would differ from compiler to compiler, and this text must not.
        qWarning() << "int main(int, char**)" << "failed to request file installation:";
        return 1;
    }
    return 0;
}
