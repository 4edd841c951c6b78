// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "desktopfileremoval.h"

#include "busnames.h"
#include "desktopownerresolver.h"
#include "packageremoval.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusInterface>
#include <QDBusMessage>
#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

DesktopFileRemoval::DesktopFileRemoval(const PackageRemoval::IsZarnPackage &isZarnPackage, QDBusInterface *hooks,
                                       PackageRemoval *packageRemoval, QObject *parent)
    : QObject(parent)
    , m_isZarnPackage(isZarnPackage)
    , m_hooks(hooks)
    , m_packageRemoval(packageRemoval)
{
}

void DesktopFileRemoval::removePackageByDesktopFile(const QString &desktopFile)
{
    if (!QFileInfo(desktopFile).isFile()) {
        qWarning() << "void InstallationHandler::removePackageByDesktopFile(const QString&)"
                   << "bad desktop file:" << desktopFile;
        return;
    }

    const QString userApplications = QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation);
    if (desktopFile.startsWith(userApplications)) {
        removeUserLauncher(desktopFile);
    } else {
        removeSystemLauncher(desktopFile);
    }
}

// The hook hears the file name up to its first dot. The package manager, below,
// is asked for the name up to the last one (Known behaviour 40).
void DesktopFileRemoval::removeUserLauncher(const QString &desktopFile)
{
    if (!QFile::remove(desktopFile)) {
        qWarning() << "Failed to remove desktopFile:" << desktopFile;
    }
    const QDBusMessage reply =
            m_hooks->call(QDBus::Block, QStringLiteral("OnRemove"), QFileInfo(desktopFile).baseName());
    const QDBusError error(reply);
    if (error.isValid()) {
        qWarning() << "Failed to call ZARN hook 'OnRemove' for Runtime Manager service: " << error.message();
    }
}

void DesktopFileRemoval::removeSystemLauncher(const QString &desktopFile)
{
    const QString package = QFileInfo(desktopFile).completeBaseName();
    if (m_isZarnPackage(package)) {
        m_packageRemoval->removePackages({package}, false);
    } else {
        findOwner(desktopFile);
    }
}

// A search that finds nobody is never reported as ended, and one that finds
// several owners is reported so for each of them (Known behaviour 22, 23).
void DesktopFileRemoval::findOwner(const QString &desktopFile)
{
    auto *resolver = new DesktopOwnerResolver(desktopFile);
    emit searchStarted();
    connect(resolver, &DesktopOwnerResolver::ownerPackageFound, this, &DesktopFileRemoval::handleOwnerPackageFound);
    connect(resolver, &DesktopOwnerResolver::ownerApkFound, this, &DesktopFileRemoval::handleOwnerApkFound);
}

void DesktopFileRemoval::handleOwnerPackageFound(const QString &package)
{
    emit ownerFound();
    m_packageRemoval->removePackages({package}, false);
}

// The daemon finds the application by its launcher. The package file only served the search.
void DesktopFileRemoval::handleOwnerApkFound(const QString &desktopFile, const QString &apk)
{
    Q_UNUSED(apk)

    emit ownerFound();
    QDBusInterface zindro(BusNames::Zindro::Service, BusNames::Zindro::Path, BusNames::Zindro::Interface,
                          QDBusConnection::systemBus());
    const QDBusMessage reply = zindro.call(QDBus::Block, QStringLiteral("removeFile"), desktopFile);
    const bool removed = reply.type() == QDBusMessage::ReplyMessage && reply.arguments().value(0).toBool();
    if (!removed) {
        qWarning() << "InstallationHandler::removePackageByDesktopFile(const QString&)::"
                      "<lambda(const QString&, const QString&)>"
                   << "failed to remove android app:" << desktopFile;
    }
}
