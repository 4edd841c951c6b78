// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QMetaType>
#include <QObject>
#include <QString>

class InstallPackageTransaction;
class TransactionView;

// moc registers the signal's argument for queued use only if it knows the type.
Q_DECLARE_OPAQUE_POINTER(InstallPackageTransaction *)
Q_DECLARE_METATYPE(InstallPackageTransaction *)

/**
 * One installation request in progress. Whoever creates it owns it, attaches
 * the dialog controller, starts it once, and releases it after
 * transactionFinished, which comes at most once and possibly inside start().
 */
class InstallTransaction : public QObject
{
    Q_OBJECT

public:
    virtual void start() = 0;

    /** The dialog controller that asks the user; borrowed, it outlives the transaction. */
    virtual void setTransactionView(TransactionView *view) = 0;

Q_SIGNALS:
    /**
     * success is true exactly when nothing failed. errorString has one line for
     * each failed file; a refusal by the policy, or by the user for all files up
     * to then, is one line for all of them.
     */
    void transactionFinished(bool success, const QString &errorString, InstallPackageTransaction *transaction);
};
