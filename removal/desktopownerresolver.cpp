// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "desktopownerresolver.h"

#include "packagekitsignals.h"
#include "systembus.h"

#include <mdesktopentry.h>

#include <PackageKit/Daemon>

#include <QDebug>
#include <QTimer>

namespace {

QString readApk(const QString &desktopFile)
{
    const QString key = QStringLiteral("Desktop Entry/X-zindro-apkfile");
    const MDesktopEntry entry(desktopFile);
    return entry.contains(key) ? entry.value(key) : QString();
}

}

// For an Android launcher the search is for the owner of the Android package
// file: a native package that carries the application is removed as a whole.
DesktopOwnerResolver::DesktopOwnerResolver(const QString &desktopFile, QObject *parent)
    : QObject(parent)
    , m_desktopFile(desktopFile)
{
    if (!SystemBus::isConnected()) {
        // Not at once: the creator connects to the signals only after construction.
        QTimer::singleShot(0, this, &DesktopOwnerResolver::handleUnreachable);
        return;
    }
    subscribeToPackageKitSignals();
    const QString apk = readApk(m_desktopFile);
    const QString term = apk.isEmpty() ? m_desktopFile : apk;
    auto *search = PackageKit::Daemon::searchFiles(term, PackageKit::Transaction::FilterInstalled);
    connect(search, &PackageKit::Transaction::finished, this, &DesktopOwnerResolver::handleFinished);
    connect(search, &PackageKit::Transaction::errorCode, this, &DesktopOwnerResolver::handleError);
    connect(search, &PackageKit::Transaction::package, this, &DesktopOwnerResolver::handlePackage);
}

void DesktopOwnerResolver::handlePackage(PackageKit::Transaction::Info info, const QString &pkgId,
                                         const QString &summary)
{
    Q_UNUSED(info)
    Q_UNUSED(summary)

    const QString name = PackageKit::Transaction::packageName(pkgId);
    if (!name.isEmpty()) {
        m_ownerFound = true;
        emit ownerPackageFound(name);
    }
}

void DesktopOwnerResolver::handleError(PackageKit::Transaction::Error error, const QString &details)
{
    qWarning() << "Error on resolving desktop file owner" << error << details;
}

// A search without a system bus ends like one that failed.
void DesktopOwnerResolver::handleUnreachable()
{
    handleError(PackageKit::Transaction::ErrorInternalError, SystemBus::NotConnected);
    handleFinished(PackageKit::Transaction::ExitFailed, 0);
}

void DesktopOwnerResolver::handleFinished(PackageKit::Transaction::Exit status, uint runtime)
{
    Q_UNUSED(status)
    Q_UNUSED(runtime)

    deleteLater();
    if (m_ownerFound) {
        return;
    }
    // The file may have changed during the search.
    const QString apk = readApk(m_desktopFile);
    if (!apk.isEmpty()) {
        emit ownerApkFound(m_desktopFile, apk);
    }
}
