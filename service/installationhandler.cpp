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
#include <QDebug>
#include <QScopedValueRollback>
#include <QUrl>

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr auto IdleTimeout = 30s;

// Installing and removing may take the package manager this long.
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
    , m_packageRemoval(this, &m_packageManager, &m_launcherModel)
    , m_desktopFileRemoval(this, &m_packageManager, &m_hooks)
{
    registerZarnPackage();
    m_packageManager.setTimeout(static_cast<int>(PackageManagerTimeout.count()));

    m_idleTimer.setInterval(IdleTimeout);
    m_idleTimer.setSingleShot(true);
    connect(&m_idleTimer, &QTimer::timeout, QCoreApplication::instance(), &QCoreApplication::quit);
    m_idleTimer.start();

    connect(&m_transactionView, &TransactionView::needConfirm, this, &InstallationHandler::needConfirm);
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
    // In this order: the outcome is on the bus before the transaction is released.
    connect(transaction, &InstallTransaction::transactionFinished, this, &InstallationHandler::installFinished);
    connect(transaction, &InstallTransaction::transactionFinished, this, &InstallationHandler::transactionFinished);
    transaction->setDeveloperModeInterface(&m_developerMode);
    transaction->setPackageManagerInterface(&m_packageManager);
    m_pendingTransactions.append(transaction);

    if (!m_transactionView.isVisible()) {
        processNextTransaction();
    }
}

// Goes by the caller's own strings, and by whatever name the file yields, an
// empty one included.
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
    m_desktopFileRemoval.removePackageByDesktopFile(desktopFile);
}

bool InstallationHandler::isCallerPrivileged()
{
    return CallerCheck::isPrivileged(*this);
}

void InstallationHandler::handleRemovalFinished(const QString &packageName, const QString &errorString)
{
    if (errorString.isEmpty()) {
        qDebug() << "Uninstalled" << packageName;
    } else {
        qDebug() << "Failed to uninstall" << packageName << errorString;
    }
    // The home screen is told whatever the outcome, and need not listen.
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

// What finishes inside its own start() is followed by the next one from here
// rather than from inside its end: the stack stays flat, however many wait.
void InstallationHandler::processNextTransaction()
{
    bool finished = true;
    while (finished && !m_pendingTransactions.isEmpty()) {
        finished = startNextTransaction();
    }
    // Others may have finished meanwhile: what counts is the state now.
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
