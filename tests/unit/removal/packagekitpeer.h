// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "recordingpeer.h"

#include <PackageKit/Transaction>

#include <QString>
#include <QStringList>

/**
 * A scripted PackageKit daemon on the system bus. It notes the calls that it
 * receives in the journal. Its transactions are counted from 0 and emit only the
 * signals that the test asks for.
 */
class PackageKitPeer
{
public:
    explicit PackageKitPeer(Journal *journal);

    /** Leaves the bus. It receives no further calls. */
    ~PackageKitPeer();

    void tellPackage(int transaction, const QString &id, const QString &summary = {},
                     PackageKit::Transaction::Info info = PackageKit::Transaction::InfoInstalled);
    void tellProgress(int transaction, const QString &id, uint percentage);
    void tellError(int transaction, PackageKit::Transaction::Error error, const QString &details);
    void tellEnd(int transaction, PackageKit::Transaction::Exit exit, uint runtime = 0);

    /** Journal entries: the creation of a transaction, and a call of one. */
    static QString creation();
    QString call(int transaction, const QString &callAndArguments) const;

    /** Both entries of a transaction's beginning. */
    QStringList calls(int transaction, const QString &callAndArguments) const;

    /** Waits until its signals have reached the process. They are in the queue of the event loop then. */
    static bool arrives();

    /** Delivers all messages that have been sent up to now, and carries out scheduled deletions. */
    static bool settle();

    /** For other answers to its calls. */
    RecordingPeer &peer() { return m_peer; }

private:
    Q_DISABLE_COPY_MOVE(PackageKitPeer)

    QString path(int transaction) const;
    void tell(int transaction, const QString &signal, const QString &arguments);

    const int m_number;
    RecordingPeer m_peer;
};
