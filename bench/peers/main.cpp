// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// The platform's services in one process, as fast as QtDBus lets them be, so that the measured times are those of the
// program under test.

#include "packagekit.h"
#include "platform.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMetaType>

namespace {

bool publish(QDBusConnection bus, const char *service, const char *path, QObject *object)
{
    return bus.registerObject(QString::fromLatin1(path), object, QDBusConnection::ExportAllContents)
            && bus.registerService(QString::fromLatin1(service));
}

}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    qDBusRegisterMetaType<QList<qlonglong>>();
    qDBusRegisterMetaType<PackageRecord>();

    DeveloperMode developerMode;
    PackageManager packageManager;
    Hooks hooks;
    MceRequests mce;
    PackageKitDaemon packageKit;
    LauncherModel launcherModel;
    const QDBusConnection system = QDBusConnection::systemBus();
    const QDBusConnection session = QDBusConnection::sessionBus();
    const bool published = publish(system, "ru.quon.developermode", "/", &developerMode)
            && publish(system, "ru.quon.ZARN", "/ru/quon/ZARN", &packageManager)
            && publish(system, "ru.quon.RuntimeManager", "/ru/quon/ZARN/Hooks", &hooks)
            && publish(system, "com.nokia.mce", "/com/nokia/mce/request", &mce)
            && publish(system, "org.freedesktop.PackageKit", "/org/freedesktop/PackageKit", &packageKit)
            // The last name: all the others are there when it is.
            && publish(session, "org.orrinmobile.rozzle", "/LauncherModel", &launcherModel);
    return published ? QCoreApplication::exec() : 1;
}
