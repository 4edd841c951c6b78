// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// Calls every method in all of its forms, with the proxy that qdbusxml2cpp makes.

#include "proxy.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QtDebug>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    org::velmoraos::installationhandler handler(QStringLiteral("org.velmoraos.installationhandler"),
                                                QStringLiteral("/org/velmoraos/installationhandler"),
                                                QDBusConnection::sessionBus());
    const QStringList files{QStringLiteral("/no.rpm")};
    const QStringList names;
    QDBusPendingReply<> replies[] = {
            handler.installFiles(files),
            handler.installFiles(files, false),
            handler.installFiles(files, false, true),
            handler.removePackages(names),
            handler.removePackages(names, true),
            handler.removePackageByDesktopFile(QStringLiteral("/no.desktop")),
    };
    for (QDBusPendingReply<> &reply : replies) {
        reply.waitForFinished();
        if (reply.isError()) {
            qCritical() << reply.error();
            return 1;
        }
    }
    return 0;
}
