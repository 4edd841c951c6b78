// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

class QDBusInterface;

/**
 * Removes packages by name, each through the back end that owns it: the package
 * manager, or PackageKit for native packages. The home screen's launcher model
 * hears which launchers are affected.
 *
 * Each removal is reported by started() and later, usually once, by finished();
 * PackageKit may cause none or several (Known behaviour 20, 25, 28). The service
 * object owns the instance, as its parent.
 */
class PackageRemoval : public QObject
{
    Q_OBJECT

public:
    /** Whether the package manager knows a package of this name; may block. */
    using IsZarnPackage = std::function<bool(const QString &name)>;

    /** The proxies are borrowed and outlive the instance. */
    PackageRemoval(const IsZarnPackage &isZarnPackage, QDBusInterface *packageManager, QDBusInterface *launcherModel,
                   QObject *parent);

    /**
     * packageNames: RPM package names. keepUserdata is for the package manager only;
     * PackageKit has no such option.
     */
    void removePackages(const QStringList &packageNames, bool keepUserdata);

Q_SIGNALS:
    /** A back end has been asked to remove a package. */
    void started();

    /**
     * A back end has answered. errorString is empty on success and for an error
     * without a text (Known behaviour 34).
     */
    void finished(const QString &packageName, const QString &errorString);

private:
    void removeViaZarn(const QString &name, bool keepUserdata);
    void removeViaRpm(const QString &name);
    void announceUpdate(const QString &name, const QString &desktopFile);

    const IsZarnPackage m_isZarnPackage;
    QDBusInterface *const m_packageManager;
    QDBusInterface *const m_launcherModel;
};
