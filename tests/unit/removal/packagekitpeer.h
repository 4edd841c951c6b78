// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "recordingpeer.h"

#include <PackageKit/Transaction>

#include <QString>
#include <QStringList>

/**
 * PackageKit's daemon on the system bus, played by the test: it notes in the
 * journal what it is asked, and of each of its transactions, which are counted
 * from 0, it tells what the test says and nothing else.
 */
class PackageKitPeer
{
public:
    explicit PackageKitPeer(Journal *journal);

    /** Leaves the bus; nobody can call it any more when this returns. */
    ~PackageKitPeer();

    void tellPackage(int transaction, const QString &id, const QString &summary = {},
                     PackageKit::Transaction::Info info = PackageKit::Transaction::InfoInstalled);
    void tellProgress(int transaction, const QString &id, uint percentage);
    void tellError(int transaction, PackageKit::Transaction::Error error, const QString &details);
    void tellEnd(int transaction, PackageKit::Transaction::Exit exit, uint runtime = 0);

    /** Journal entries: a transaction was asked for, and a transaction was told its work. */
    static QString creation();
    QString call(int transaction, const QString &callAndArguments) const;

    /** The two that a transaction's beginning consists of. */
    QStringList calls(int transaction, const QString &callAndArguments) const;

    /** What it has told has reached the process, and waits for the event loop. */
    static bool arrives();

    /** What everybody has sent up to now has been delivered, and what is scheduled for deletion is gone. */
    static bool settle();

    /** The next transaction's creation, or any other call, can be answered otherwise. */
    RecordingPeer &peer() { return m_peer; }

private:
    Q_DISABLE_COPY_MOVE(PackageKitPeer)

    QString path(int transaction) const;
    void tell(int transaction, const QString &signal, const QString &arguments);

    const int m_number;
    RecordingPeer m_peer;
};
