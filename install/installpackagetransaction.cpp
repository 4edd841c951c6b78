// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "installpackagetransaction.h"

#include "installationerror.h"
#include "packagemanagercall.h"
#include "systempaths.h"
#include "transactionview.h"

#include <aboutsettings.h>
#include <accesspolicy.h>
#include <notification.h>

#include <QDBusError>
#include <QDBusInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDebug>
#include <QFile>

InstallPackageTransaction::InstallPackageTransaction(const QStringList &files, bool sdkMode)
    : m_files(files)
    , m_sdkMode(sdkMode)
{
}

void InstallPackageTransaction::setDeveloperModeInterface(QDBusInterface *iface)
{
    m_developerMode = iface;
}

void InstallPackageTransaction::setPackageManagerInterface(QDBusInterface *iface)
{
    m_packageManager = iface;
}

void InstallPackageTransaction::setTransactionView(TransactionView *view)
{
    if (m_view) {
        disconnect(m_view, &TransactionView::installationConfirmed, this,
                   &InstallPackageTransaction::installCurrentRpm);
        disconnect(m_view, &TransactionView::installationCancelled, this,
                   &InstallPackageTransaction::handleInstallCancelled);
    }
    m_view = view;
    connect(m_view, &TransactionView::installationConfirmed, this, &InstallPackageTransaction::installCurrentRpm);
    connect(m_view, &TransactionView::installationCancelled, this, &InstallPackageTransaction::handleInstallCancelled);
}

void InstallPackageTransaction::start()
{
    if (!Velmora::AccessPolicy().applicationInstallationEnabled()) {
        emit transactionFinished(false, notifyDisallowed(), this);
        return;
    }
    m_success = true;
    m_errorString = QString();
    processNextFile();
}

// Returns the text of the notification, which the caller of the service gets too.
QString InstallPackageTransaction::notifyDisallowed()
{
    Notification notification;
    notification.setUrgency(Notification::Critical);
    notification.setIsTransient(true);
    notification.setAppIcon(QStringLiteral("icon-lock-warning"));
    //: Notification shown when the device's policy forbids the user to install applications
    //: %1 is the operating system's name
    //% "This device's policy does not allow installing apps (%1)."
    notification.setBody(qtTrId("installationhandler-application_installation_disallowed")
                                 .arg(AboutSettings().baseOperatingSystemName()));
    notification.publish();
    return notification.body();
}

void InstallPackageTransaction::processNextFile()
{
    if (m_files.isEmpty()) {
        emit transactionFinished(m_success, m_errorString, this);
        return;
    }

    // The package manager decides about a file that cannot be read (Known behaviour 43).
    m_rpmInfo.readPackage(m_files.takeFirst());

    if (isSilentInstallationAllowed() || QFile::exists(SystemPaths::EmulatorMarker)) {
        installCurrentRpm();
    } else if (!m_view) {
        // The transaction stops here for good, since nobody can be asked.
        qWarning() << "Unable to show the confirmation dialog";
        m_success = false;
    } else {
        m_view->showConfirmation(&m_rpmInfo);
    }
}

bool InstallPackageTransaction::isSilentInstallationAllowed()
{
    const QDBusMessage reply = m_developerMode->call(QDBus::Block, QStringLiteral("IsSilentInstallationEnabled"));
    const QDBusError error(reply);
    if (error.isValid()) {
        qWarning() << "Could not fetch developer mode state: " << error.message();
        return false;
    }

    const bool enabled = reply.arguments().value(0).toBool();
    if (m_sdkMode && enabled) {
        return true;
    }

    QString reason;
    if (!m_sdkMode) {
        reason += QLatin1String("The installation is not running in sdk mode. ");
    }
    if (!enabled) {
        reason += QLatin1String("Silent software instalation is not allowed");
    }
    qWarning() << QStringLiteral("Unable install package without confirm: ") + reason;
    return false;
}

void InstallPackageTransaction::installCurrentRpm()
{
    const QString packageName = m_rpmInfo.name();
    if (!m_packageManager) {
        return;
    }
    const QDBusPendingCall call =
            callPackageManager(m_packageManager, QStringLiteral("Install"), m_rpmInfo.fileName(), QVariantMap());
    auto *watcher = new QDBusPendingCallWatcher(call, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, packageName](QDBusPendingCallWatcher *finished) { handleInstallReply(finished, packageName); });
}

void InstallPackageTransaction::handleInstallReply(QDBusPendingCallWatcher *watcher, const QString &packageName)
{
    const QDBusPendingReply<> reply = *watcher;
    if (reply.isError()) {
        appendInstallationError(packageName, reply.error().name(), reply.error().message());
        m_success = false;
    }
    processNextFile();
    watcher->deleteLater();
}

void InstallPackageTransaction::handleInstallCancelled()
{
    m_success = false;
    //: Outcome of an installation that the user declined in the confirmation dialog
    //% "The user cancelled the installation"
    m_errorString = qtTrId("installationhandler-user-aborted");
    processNextFile();
}

// Users get a translated description. The package manager's own message is meant
// for developers.
void InstallPackageTransaction::appendInstallationError(const QString &packageName, const QString &errorName,
                                                        const QString &errorMessage)
{
    Q_UNUSED(packageName)
    Q_UNUSED(errorMessage)

    if (!m_errorString.isEmpty()) {
        m_errorString += QLatin1Char('\n');
    }
    m_errorString += InstallationError::describe(errorName);
}
