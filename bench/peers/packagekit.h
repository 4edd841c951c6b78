// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDBusObjectPath>
#include <QObject>
#include <QStringList>

/**
 * PackageKit's daemon, reduced to the removal of packages. The real one would have to remove real packages, since its
 * "dummy" backend refuses each removal.
 */
class PackageKitDaemon : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.PackageKit")

public:
    Q_INVOKABLE QDBusObjectPath CreateTransaction();

private:
    int m_created = 0;
};

/** One transaction: all packages are installed, and removed at once. It is deleted after its end. */
class PackageKitTransaction : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.PackageKit.Transaction")

public:
    explicit PackageKitTransaction(QObject *parent);

    Q_INVOKABLE void SetHints(const QStringList &hints);
    Q_INVOKABLE void Resolve(qulonglong filter, const QStringList &packages);
    Q_INVOKABLE void RemovePackages(qulonglong flags, const QStringList &ids, bool allowDeps, bool autoremove);

signals:
    void Package(uint info, const QString &id, const QString &summary);
    void ItemProgress(const QString &id, uint status, uint percentage);
    void Finished(uint exit, uint runtime);

private:
    void finish();
};
