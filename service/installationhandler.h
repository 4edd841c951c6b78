// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

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
 * "org.velmoraos.installationhandler", and its hub: the queue of installation
 * transactions, the count of operations in flight, the idle timer that ends the
 * process, and the proxies and the dialog controller that it lends out.
 *
 * Requests are answered at once and return nothing; outcomes follow as signals.
 * Every invokable method and every signal is part of the bus interface.
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

Q_SIGNALS:
    /** An installation transaction has ended; errorString has one line for each failed file. */
    void installFinished(bool success, const QString &errorString);

    /** The confirmation dialog asks the user now. */
    void needConfirm();

private Q_SLOTS:
    void transactionFinished(bool success, const QString &errorString, InstallPackageTransaction *transaction);

private:
    void processNextTransaction();
    void endTransaction();
    void updateIdleTimer();

    TransactionView m_transactionView;
    QTimer m_idleTimer;
    qint32 m_transactionCount = 0;
    QDBusInterface m_launcherModel;
    QList<InstallTransaction *> m_pendingTransactions;
    QDBusInterface m_developerMode;
    QDBusInterface m_packageManager;
    QDBusInterface m_hooks;
};
