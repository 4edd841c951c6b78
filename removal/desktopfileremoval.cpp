// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "desktopfileremoval.h"

#include "busnames.h"
#include "desktopownerresolver.h"
#include "installationhandler.h"
#include "packagemanagercall.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusInterface>
#include <QDBusMessage>
#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

DesktopFileRemoval::DesktopFileRemoval(InstallationHandler *handler, QDBusInterface *packageManager,
                                       QDBusInterface *hooks)
    : m_handler(handler)
    , m_packageManager(packageManager)
    , m_hooks(hooks)
{
}

void DesktopFileRemoval::removePackageByDesktopFile(const QString &desktopFile)
{
    if (!m_handler->isCallerPrivileged()) {
        qWarning() << "removePackageByDesktopFile called from non-privileged process";
        return;
    }
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

// The hook is told whether or not the file could be deleted, and by the short
// name; the package manager below goes by the long one.
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
    if (isZarnPackage(m_packageManager, package)) {
        m_handler->removePackages({package});
    } else {
        findOwner(desktopFile);
    }
}

// The search is counted as an operation until an owner has been found. Nothing
// lowers the count when none is, and every further owner lowers it again:
// Known behaviour 22, 23.
void DesktopFileRemoval::findOwner(const QString &desktopFile)
{
    auto *resolver = new DesktopOwnerResolver(desktopFile);
    m_handler->beginTransaction();
    QObject::connect(resolver, &DesktopOwnerResolver::ownerPackageFound, m_handler,
                     [this](const QString &package) { handleOwnerPackageFound(package); });
    QObject::connect(resolver, &DesktopOwnerResolver::ownerApkFound, m_handler,
                     [this](const QString &launcher, const QString &) { handleOwnerApkFound(launcher); });
}

void DesktopFileRemoval::handleOwnerPackageFound(const QString &package)
{
    m_handler->endTransaction();
    m_handler->removePackages({package});
}

void DesktopFileRemoval::handleOwnerApkFound(const QString &desktopFile)
{
    m_handler->endTransaction();
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
