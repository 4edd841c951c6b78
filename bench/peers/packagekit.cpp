// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "packagekit.h"

#include <QDBusConnection>
#include <QTimer>

namespace {

// Values of PackageKit's enumerations.
constexpr uint InfoInstalled = 1;
constexpr uint StatusRemove = 6;
constexpr uint ExitSuccess = 1;

}

QDBusObjectPath PackageKitDaemon::CreateTransaction()
{
    const QString path = QStringLiteral("/%1_bench").arg(++m_created);
    QDBusConnection::systemBus().registerObject(path, new PackageKitTransaction(this),
                                                QDBusConnection::ExportAllContents);
    return QDBusObjectPath(path);
}

PackageKitTransaction::PackageKitTransaction(QObject *parent)
    : QObject(parent)
{
}

void PackageKitTransaction::SetHints(const QStringList &hints)
{
    Q_UNUSED(hints)
}

// The signals follow the reply.
void PackageKitTransaction::Resolve(qulonglong filter, const QStringList &packages)
{
    Q_UNUSED(filter)

    QTimer::singleShot(0, this, [this, packages]() {
        for (const QString &package : packages) {
            emit Package(InfoInstalled, package + QStringLiteral(";1.0-1;noarch;installed"), package);
        }
        finish();
    });
}

void PackageKitTransaction::RemovePackages(qulonglong flags, const QStringList &ids, bool allowDeps, bool autoremove)
{
    Q_UNUSED(flags)
    Q_UNUSED(allowDeps)
    Q_UNUSED(autoremove)

    QTimer::singleShot(0, this, [this, ids]() {
        for (const QString &id : ids) {
            emit ItemProgress(id, StatusRemove, 100);
        }
        finish();
    });
}

void PackageKitTransaction::finish()
{
    emit Finished(ExitSuccess, 0);
    deleteLater();
}
