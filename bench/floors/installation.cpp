// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// The floor of a silent installation: a bare service that makes the same bus
// calls and reads each file with the same calls of librpm, twice: once for the
// name of what it replaces, once to install it.

#include "installation.h"

#include "bareread.h"
#include "floornames.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QFile>

BareInstallation::BareInstallation()
    : m_developerMode(QStringLiteral("ru.quon.developermode"), QStringLiteral("/"),
                      QStringLiteral("ru.quon.developermode"), QDBusConnection::systemBus())
{
}

void BareInstallation::installFiles(const QStringList &files, bool sdkMode, bool keepUserdata)
{
    if (sdkMode) {
        for (const QString &file : files) {
            removePackages({bareRead(QFile::encodeName(file).constData()).name}, keepUserdata);
        }
    }
    m_files = files;
    installNext();
}

void BareInstallation::installNext()
{
    if (m_files.isEmpty()) {
        emit installFinished(true, QString());
        return;
    }
    const QString file = m_files.takeFirst();
    bareRead(QFile::encodeName(file).constData());
    m_developerMode.call(QStringLiteral("IsSilentInstallationEnabled"));
    auto watcher = new QDBusPendingCallWatcher(
            m_packageManager.asyncCall(QStringLiteral("Install"), file, QVariantMap()), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, &BareInstallation::installNext);
    connect(watcher, &QDBusPendingCallWatcher::finished, watcher, &QObject::deleteLater);
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    BareInstallation installation;
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.registerObject(FloorNames::Path, &installation, QDBusConnection::ExportAllContents);
    return bus.registerService(FloorNames::Service) ? QCoreApplication::exec() : 1;
}
