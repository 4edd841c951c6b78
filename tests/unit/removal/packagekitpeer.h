// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "recordingpeer.h"
#include "texts.h"
#include "waitfor.h"

#include <PackageKit/Transaction>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QEvent>

/**
 * A scripted PackageKit daemon on the system bus. It notes the calls that it receives in the journal. Its transactions
 * are counted from 0 and emit only the signals that the test asks for.
 */
class PackageKitPeer
{
public:
    explicit PackageKitPeer(Journal *journal)
        : m_peer(qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS"), {Service}, journal)
    {
        QList<PeerAnswer> creations;
        for (int transaction = 0; transaction < 20; ++transaction) {
            creations.append(PeerAnswer::values("(objectpath '%1',)"_s.arg(path(transaction)).toUtf8()));
        }
        m_peer.answer("CreateTransaction"_s, creations);
        // The library prepares a transaction by these calls, which are not tested here.
        m_peer.overlook("GetAll"_s);
        m_peer.answer("GetAll"_s, PeerAnswer::values("(@a{sv} {},)"));
        m_peer.overlook("SetHints"_s);
        for (const char *member : {"SetHints", "Resolve", "RemovePackages", "SearchFiles"}) {
            m_peer.answer(QString::fromLatin1(member), PeerAnswer::values());
        }
    }

    /** Leaves the bus. It receives no further calls. */
    ~PackageKitPeer() { m_peer.giveUp(Service); }

    void tellPackage(int transaction, const QString &id, const QString &summary = {},
                     PackageKit::Transaction::Info info = PackageKit::Transaction::InfoInstalled)
    {
        tell(transaction, "Package"_s, "(uint32 %1, %2, %3)"_s.arg(info).arg(quoted(id), quoted(summary)));
    }

    void tellProgress(int transaction, const QString &id, uint percentage)
    {
        tell(transaction, "ItemProgress"_s,
             "(%1, uint32 %2, uint32 %3)"_s.arg(quoted(id)).arg(PackageKit::Transaction::StatusRemove).arg(percentage));
    }

    void tellError(int transaction, PackageKit::Transaction::Error error, const QString &details)
    {
        tell(transaction, "ErrorCode"_s, "(uint32 %1, %2)"_s.arg(error).arg(quoted(details)));
    }

    void tellEnd(int transaction, PackageKit::Transaction::Exit exit, uint runtime = 0)
    {
        tell(transaction, "Finished"_s, "(uint32 %1, uint32 %2)"_s.arg(exit).arg(runtime));
    }

    /** Journal entries: the creation of a transaction, and a call of one. */
    static QString creation()
    {
        return Service + " /org/freedesktop/PackageKit org.freedesktop.PackageKit.CreateTransaction()"_s;
    }

    QString call(int transaction, const QString &callAndArguments) const
    {
        return "%1 %2 %3."_s.arg(Service, path(transaction), TransactionInterface) + callAndArguments;
    }

    /** Both entries of a transaction's beginning. */
    QStringList calls(int transaction, const QString &callAndArguments) const
    {
        return {creation(), call(transaction, callAndArguments)};
    }

    /** Waits until its signals have reached the process. They are in the queue of the event loop then. */
    static bool arrives()
    {
        const QDBusMessage ping =
                QDBusMessage::createMethodCall(Service, "/"_s, "org.freedesktop.DBus.Peer"_s, "Ping"_s);
        return QDBusConnection::systemBus().call(ping, QDBus::Block, WaitLimit).type() == QDBusMessage::ReplyMessage;
    }

    /** Delivers all messages that have been sent up to now, and carries out scheduled deletions. */
    static bool settle()
    {
        const bool answered = arrives();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return answered;
    }

    /** For other answers to its calls. */
    RecordingPeer &peer() { return m_peer; }

private:
    Q_DISABLE_COPY_MOVE(PackageKitPeer)

    QString path(int transaction) const { return "/%1_%2"_s.arg(m_number).arg(transaction); }

    void tell(int transaction, const QString &signal, const QString &arguments)
    {
        m_peer.emitSignal(path(transaction), TransactionInterface, signal, arguments.toUtf8());
    }

    static QString quoted(QString text)
    {
        text.replace(QLatin1Char('\\'), "\\\\"_s).replace(QLatin1Char('"'), "\\\""_s);
        return QLatin1Char('"') + text.replace(QLatin1Char('\n'), "\\n"_s) + QLatin1Char('"');
    }

    static inline const QString Service = "org.freedesktop.PackageKit"_s;
    static inline const QString TransactionInterface = "org.freedesktop.PackageKit.Transaction"_s;
    static inline int s_count = 0;

    // Each daemon of a test process has transaction paths of its own.
    const int m_number = ++s_count;
    RecordingPeer m_peer;
};
