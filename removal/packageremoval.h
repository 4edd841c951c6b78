// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>
#include <QStringList>

class InstallationHandler;
class QDBusInterface;

/**
 * Removes packages by name, each through the back end that owns it: the
 * package manager, or PackageKit for native packages. The home screen's
 * launcher model hears which launchers are affected. Each removal ends in the
 * handler's handleRemovalFinished().
 */
class PackageRemoval
{
public:
    /** All are borrowed and outlive the removals. */
    PackageRemoval(InstallationHandler *handler, QDBusInterface *packageManager, QDBusInterface *launcherModel);

    /** keepUserdata is honoured by the package manager only; PackageKit knows no such thing. */
    void removePackages(const QStringList &packageNames, bool keepUserdata);

private:
    void removeViaZarn(const QString &name, bool keepUserdata);
    void removeViaRpm(const QString &name);
    void announceUpdate(const QString &name, const QString &desktopFile);

    InstallationHandler *const m_handler;
    QDBusInterface *const m_packageManager;
    QDBusInterface *const m_launcherModel;
};
