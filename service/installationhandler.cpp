// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "installationhandler.h"

#include "busnames.h"
#include "callercheck.h"
#include "installpackagetransaction.h"
#include "rpminfo.h"
#include "zarnpackage.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusReply>
#include <QDebug>
#include <QScopedValueRollback>
#include <QUrl>

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr auto IdleTimeout = 30s;

// The package manager may take this long to install or remove a package.
constexpr std::chrono::milliseconds PackageManagerTimeout = 15min;

QStringList toLocalFiles(const QStringList &fileUrls)
{
    QStringList files;
    files.reserve(fileUrls.size());
    std::transform(fileUrls.cbegin(), fileUrls.cend(), std::back_inserter(files),
                   [](const QString &fileUrl) { return QUrl::fromUserInput(fileUrl).toLocalFile(); });
    return files;
}

}

InstallationHandler::InstallationHandler(QObject *parent)
    : QObject(parent)
    , m_transactionView(nullptr)
    , m_launcherModel(BusNames::LauncherModel::Service, BusNames::LauncherModel::Path,
                      BusNames::LauncherModel::Interface, QDBusConnection::sessionBus())
    , m_developerMode(BusNames::DeveloperMode::Service, BusNames::DeveloperMode::Path,
                      BusNames::DeveloperMode::Interface, QDBusConnection::systemBus())
    , m_packageManager(BusNames::PackageManager::Service, BusNames::PackageManager::Path,
                       BusNames::PackageManager::Interface, QDBusConnection::systemBus())
    , m_hooks(BusNames::Hooks::Service, BusNames::Hooks::Path, BusNames::Hooks::Interface, QDBusConnection::systemBus())
    , m_packageRemoval([this](const QString &name) { return isZarnPackage(name); }, &m_packageManager, &m_launcherModel,
                       this)
    , m_desktopFileRemoval([this](const QString &name) { return isZarnPackage(name); }, &m_hooks, &m_packageRemoval,
                           this)
{
    registerZarnPackage();
    m_packageManager.setTimeout(static_cast<int>(PackageManagerTimeout.count()));

    m_idleTimer.setInterval(IdleTimeout);
    m_idleTimer.setSingleShot(true);
    connect(&m_idleTimer, &QTimer::timeout, QCoreApplication::instance(), &QCoreApplication::quit);
    m_idleTimer.start();

    connect(&m_transactionView, &TransactionView::needConfirm, this, &InstallationHandler::needConfirm);

    connect(&m_packageRemoval, &PackageRemoval::started, this, &InstallationHandler::beginTransaction);
    connect(&m_packageRemoval, &PackageRemoval::finished, this, &InstallationHandler::handleRemovalFinished);
    // A search counts as an operation until it has found an owner.
    connect(&m_desktopFileRemoval, &DesktopFileRemoval::searchStarted, this, &InstallationHandler::beginTransaction);
    connect(&m_desktopFileRemoval, &DesktopFileRemoval::ownerFound, this, &InstallationHandler::endTransaction);
}

void InstallationHandler::setEngine(QQmlEngine *engine)
{
    m_transactionView.setEngine(engine);
}

void InstallationHandler::installFiles(const QStringList &fileUrls, bool sdkMode, bool keepUserdata)
{
    const QStringList files = toLocalFiles(fileUrls);
    if (sdkMode) {
        removeInstalledVersions(fileUrls, keepUserdata);
    }

    auto *transaction = new InstallPackageTransaction(files, sdkMode);
    // The order matters: the signal is on the bus before the transaction is released.
    connect(transaction, &InstallTransaction::transactionFinished, this, &InstallationHandler::installFinished);
    connect(transaction, &InstallTransaction::transactionFinished, this, &InstallationHandler::transactionFinished);
    transaction->setDeveloperModeInterface(&m_developerMode);
    transaction->setPackageManagerInterface(&m_packageManager);
    m_pendingTransactions.append(transaction);

    if (!m_transactionView.isVisible()) {
        processNextTransaction();
    }
}

// The reader gets the strings of the caller as they are. An unreadable file has
// no name, and the empty name is removed then (Known behaviour 14).
void InstallationHandler::removeInstalledVersions(const QStringList &fileUrls, bool keepUserdata)
{
    for (const QString &fileUrl : fileUrls) {
        RpmInfo package;
        package.readPackage(fileUrl);
        removePackages({package.name()}, keepUserdata);
    }
}

void InstallationHandler::removePackages(const QStringList &packageNames, bool keepUserdata)
{
    m_packageRemoval.removePackages(packageNames, keepUserdata);
}

void InstallationHandler::removePackageByDesktopFile(const QString &desktopFile)
{
    if (!isCallerPrivileged()) {
        qWarning() << "removePackageByDesktopFile called from non-privileged process";
        return;
    }
    m_desktopFileRemoval.removePackageByDesktopFile(desktopFile);
}

bool InstallationHandler::isCallerPrivileged()
{
    return CallerCheck::isPrivileged(*this);
}

// Any error counts as "no". PackageKit is asked then, so an absent or silent
// package manager does not keep a native package from being removed.
bool InstallationHandler::isZarnPackage(const QString &name)
{
    const QDBusReply<ZarnPackage> reply = m_packageManager.call(QDBus::Block, QStringLiteral("GetPackage"), name);
    return reply.isValid();
}

void InstallationHandler::handleRemovalFinished(const QString &packageName, const QString &errorString)
{
    if (errorString.isEmpty()) {
        qDebug() << "Uninstalled" << packageName;
    } else {
        qDebug() << "Failed to uninstall" << packageName << errorString;
    }
    // The home screen hears of failed removals too, and its answer does not matter.
    m_launcherModel.call(QDBus::Block, QStringLiteral("updatingFinished"), packageName);
    endTransaction();
    emit removalFinished(errorString.isEmpty(), errorString);
}

void InstallationHandler::transactionFinished(bool success, const QString &errorString,
                                              InstallPackageTransaction *transaction)
{
    Q_UNUSED(success)
    Q_UNUSED(errorString)

    transaction->disconnect();
    transaction->deleteLater();
    endTransaction();
    if (transaction == m_starting) {
        m_starting = nullptr;
    } else {
        processNextTransaction();
    }
}

// A loop starts the transactions that finish inside their own start(), so that a
// long queue of them does not make the stack grow.
void InstallationHandler::processNextTransaction()
{
    bool finished = true;
    while (finished && !m_pendingTransactions.isEmpty()) {
        finished = startNextTransaction();
    }
    // Other operations may have ended in the meantime.
    updateIdleTimer();
}

bool InstallationHandler::startNextTransaction()
{
    ++m_transactionCount;
    m_idleTimer.stop();
    InstallTransaction *transaction = m_pendingTransactions.takeFirst();
    const QScopedValueRollback<InstallTransaction *> starting(m_starting, transaction);
    transaction->setTransactionView(&m_transactionView);
    transaction->start();
    return !m_starting;
}

void InstallationHandler::beginTransaction()
{
    ++m_transactionCount;
    updateIdleTimer();
}

void InstallationHandler::endTransaction()
{
    --m_transactionCount;
    if (m_transactionCount < 0) {
        qWarning() << "Transaction count out of sync!";
        m_transactionCount = 0;
    }
    updateIdleTimer();
}

void InstallationHandler::updateIdleTimer()
{
    if (m_transactionCount != 0 || !m_pendingTransactions.isEmpty()) {
        m_idleTimer.stop();
    } else {
        m_idleTimer.start();
    }
}
