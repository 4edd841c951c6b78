// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QMetaType>
#include <QObject>
#include <QString>

class InstallPackageTransaction;
class TransactionView;

// moc registers the type of a signal's argument only if it knows the type.
Q_DECLARE_OPAQUE_POINTER(InstallPackageTransaction *)
Q_DECLARE_METATYPE(InstallPackageTransaction *)

/**
 * One installation request in progress. Its creator owns it, attaches the dialog
 * controller, and starts it once. At the first transactionFinished(), which may
 * come inside start(), the creator disconnects and releases it.
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
     * The request has ended. success is true exactly when nothing failed. errorString
     * has one line for each failed file. A refusal by the policy is one line for all
     * files, and a refusal by the user one line for all files up to then.
     */
    void transactionFinished(bool success, const QString &errorString, InstallPackageTransaction *transaction);
};
