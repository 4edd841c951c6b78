// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

class InstallationHandler;
class QDBusInterface;

/**
 * Removes the application that a launcher file starts: deletes a user-local
 * launcher, and for a system launcher finds the owner, which is a package of the
 * package manager, a native package or an Android application.
 *
 * Only packages end in a signal of the handler; everything else is silent but
 * for the log.
 */
class DesktopFileRemoval
{
public:
    /** All are borrowed and outlive the removals. */
    DesktopFileRemoval(InstallationHandler *handler, QDBusInterface *packageManager, QDBusInterface *hooks);

    /** desktopFile: absolute path. Only while a bus method call is being handled: its caller is checked first. */
    void removePackageByDesktopFile(const QString &desktopFile);

private:
    void removeUserLauncher(const QString &desktopFile);
    void removeSystemLauncher(const QString &desktopFile);
    void findOwner(const QString &desktopFile);
    void handleOwnerPackageFound(const QString &package);
    void handleOwnerApkFound(const QString &desktopFile);

    InstallationHandler *const m_handler;
    QDBusInterface *const m_packageManager;
    QDBusInterface *const m_hooks;
};
