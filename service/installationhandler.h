// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "desktopfileremoval.h"
#include "packageremoval.h"
#include "transactionview.h"

#include <QDBusContext>
#include <QDBusInterface>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QTimer>

class InstallPackageTransaction;
class InstallTransaction;
class QQmlEngine;

/**
 * The service's one object on the session bus, interface
 * "org.velmoraos.installationhandler", and its hub. It holds the queue of
 * installation transactions, the count of operations in flight, the idle timer
 * that ends the process, and the D-Bus proxies and the dialog controller that it
 * lends out. The transactions and the removals do the work and report by signals.
 *
 * Requests return nothing. A signal reports the outcome, usually after the reply;
 * a request that fails early is reported before it (Known behaviour 2). Removals,
 * including that of an installation in sdk mode, are answered after every
 * "GetPackage" (up to 15 minutes a name), "updatingStarted" and "OnRemove" (up to
 * 25 seconds a call) that comes before the removal, and other requests wait
 * meanwhile (Known behaviour 3, 4). Every invokable method and every signal is part
 * of the bus interface.
 */
class InstallationHandler : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.velmoraos.installationhandler")

public:
    /** Creates the proxies and starts the idle timer. */
    explicit InstallationHandler(QObject *parent = nullptr);

    /** The engine of the confirmation dialog; borrowed for the handler's life. */
    void setEngine(QQmlEngine *engine);

    /**
     * Installs package files as one transaction, which ends in one installFinished.
     * fileUrls: local paths or file URLs; anything else counts as an empty path.
     * sdkMode: may go without confirmation where developer mode allows it.
     */
    Q_INVOKABLE void installFiles(const QStringList &fileUrls, bool sdkMode = false, bool keepUserdata = false);

    /**
     * Removes installed packages by name; each ends in a removalFinished of its own.
     * PackageKit may cause none, or more than one: Known behaviour 20, 25, 28.
     * keepUserdata: leave the data of the applications, where the back end can.
     */
    Q_INVOKABLE void removePackages(const QStringList &packageNames, bool keepUserdata = false);

    /**
     * Removes the application that the launcher file at this absolute path starts.
     * Callers that are not privileged get org.freedesktop.DBus.Error.AccessDenied.
     */
    Q_INVOKABLE void removePackageByDesktopFile(const QString &desktopFile);

Q_SIGNALS:
    /** An installation request has ended; for the arguments see InstallTransaction::transactionFinished(). */
    void installFinished(bool success, const QString &errorString);

    /** A package removal has ended; errorString is the back end's text. */
    void removalFinished(bool success, const QString &errorString);

    /** The confirmation dialog is about to be loaded. If it is broken, nobody is asked (Known behaviour 52). */
    void needConfirm();

private Q_SLOTS:
    void transactionFinished(bool success, const QString &errorString, InstallPackageTransaction *transaction);

private:
    void beginTransaction();
    void endTransaction();
    void handleRemovalFinished(const QString &packageName, const QString &errorString);
    bool isCallerPrivileged();
    bool isZarnPackage(const QString &name);
    void removeInstalledVersions(const QStringList &fileUrls, bool keepUserdata);
    void processNextTransaction();
    bool startNextTransaction();
    void updateIdleTimer();

    TransactionView m_transactionView;
    QTimer m_idleTimer;
    qint32 m_transactionCount = 0;
    QDBusInterface m_launcherModel;
    QList<InstallTransaction *> m_pendingTransactions;
    QDBusInterface m_developerMode;
    QDBusInterface m_packageManager;
    QDBusInterface m_hooks;
    PackageRemoval m_packageRemoval;
    DesktopFileRemoval m_desktopFileRemoval;
    // The transaction whose start() is running; null again as soon as that transaction has finished.
    InstallTransaction *m_starting = nullptr;
};
