// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "packageremoval.h"

#include <QObject>
#include <QString>

class QDBusInterface;

/**
 * Removes the application that a launcher file (freedesktop desktop entry)
 * starts. A launcher of the user's own is deleted. For a launcher of the system
 * the owner is found, which is a package of the package manager, a native package
 * or an Android application, and removed.
 *
 * Removals of packages are reported by the PackageRemoval. All other outcomes
 * are only logged.
 */
class DesktopFileRemoval : public QObject
{
    Q_OBJECT

public:
    /** The proxy and packageRemoval are borrowed and outlive the instance. */
    DesktopFileRemoval(const PackageRemoval::IsZarnPackage &isZarnPackage, QDBusInterface *hooks,
                       PackageRemoval *packageRemoval, QObject *parent);

    /** desktopFile: absolute path. The caller's rights have been checked before. */
    void removePackageByDesktopFile(const QString &desktopFile);

Q_SIGNALS:
    /** The search for the owner of a launcher has begun. */
    void searchStarted();

    /** The search has found an owner; comes before the owner is removed, and once for each of several owners. */
    void ownerFound();

private:
    void removeUserLauncher(const QString &desktopFile);
    void removeSystemLauncher(const QString &desktopFile);
    void findOwner(const QString &desktopFile);
    void handleOwnerPackageFound(const QString &package);
    void handleOwnerApkFound(const QString &desktopFile, const QString &apk);

    const PackageRemoval::IsZarnPackage m_isZarnPackage;
    QDBusInterface *const m_hooks;
    PackageRemoval *const m_packageRemoval;
};
