// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <PackageKit/Transaction>

#include <QObject>
#include <QStringList>

/** Removes native packages through PackageKit, one request at a time. */
class BarePackageKitRemoval : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.velmoraos.installationhandler")

public:
    Q_INVOKABLE void removePackages(const QStringList &packageNames, bool keepUserdata);

Q_SIGNALS:
    void removalFinished(bool success, const QString &errorString);

private:
    void takeResolved(PackageKit::Transaction::Info info, const QString &id, const QString &summary);
    void removeResolved();
    void reportError(PackageKit::Transaction::Error error, const QString &details);
    void reportEnd(PackageKit::Transaction::Exit status, uint runtime);
    void ignoreProgress(const QString &id, PackageKit::Transaction::Status status, uint percentage);

    QStringList m_ids;
};
