// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "packagekitpeer.h"

#include "literals.h"
#include "waitfor.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QEvent>

namespace {

constexpr int transactions = 20;

const QString Service = "org.freedesktop.PackageKit"_s;
const QString TransactionInterface = "org.freedesktop.PackageKit.Transaction"_s;

// Each daemon of a test process has transaction paths of its own.
int nextNumber()
{
    static int number = 0;
    return ++number;
}

QString quoted(QString text)
{
    text.replace(QLatin1Char('\\'), "\\\\"_s).replace(QLatin1Char('"'), "\\\""_s);
    return QLatin1Char('"') + text.replace(QLatin1Char('\n'), "\\n"_s) + QLatin1Char('"');
}

}

PackageKitPeer::PackageKitPeer(Journal *journal)
    : m_number(nextNumber())
    , m_peer(qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS"), {Service}, journal)
{
    QList<PeerAnswer> creations;
    for (int transaction = 0; transaction < transactions; ++transaction) {
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

PackageKitPeer::~PackageKitPeer()
{
    m_peer.giveUp(Service);
}

void PackageKitPeer::tellPackage(int transaction, const QString &id, const QString &summary,
                                 PackageKit::Transaction::Info info)
{
    tell(transaction, "Package"_s, "(uint32 %1, %2, %3)"_s.arg(info).arg(quoted(id), quoted(summary)));
}

void PackageKitPeer::tellProgress(int transaction, const QString &id, uint percentage)
{
    tell(transaction, "ItemProgress"_s,
         "(%1, uint32 %2, uint32 %3)"_s.arg(quoted(id)).arg(PackageKit::Transaction::StatusRemove).arg(percentage));
}

void PackageKitPeer::tellError(int transaction, PackageKit::Transaction::Error error, const QString &details)
{
    tell(transaction, "ErrorCode"_s, "(uint32 %1, %2)"_s.arg(error).arg(quoted(details)));
}

void PackageKitPeer::tellEnd(int transaction, PackageKit::Transaction::Exit exit, uint runtime)
{
    tell(transaction, "Finished"_s, "(uint32 %1, uint32 %2)"_s.arg(exit).arg(runtime));
}

QString PackageKitPeer::creation()
{
    return Service + " /org/freedesktop/PackageKit org.freedesktop.PackageKit.CreateTransaction()"_s;
}

QString PackageKitPeer::call(int transaction, const QString &callAndArguments) const
{
    return Service + QLatin1Char(' ') + path(transaction) + QLatin1Char(' ') + TransactionInterface + QLatin1Char('.')
            + callAndArguments;
}

QStringList PackageKitPeer::calls(int transaction, const QString &callAndArguments) const
{
    return {creation(), call(transaction, callAndArguments)};
}

bool PackageKitPeer::arrives()
{
    const QDBusMessage ping = QDBusMessage::createMethodCall(Service, "/"_s, "org.freedesktop.DBus.Peer"_s, "Ping"_s);
    return QDBusConnection::systemBus().call(ping, QDBus::Block, WaitLimit).type() == QDBusMessage::ReplyMessage;
}

bool PackageKitPeer::settle()
{
    const bool answered = arrives();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return answered;
}

QString PackageKitPeer::path(int transaction) const
{
    return "/%1_%2"_s.arg(m_number).arg(transaction);
}

void PackageKitPeer::tell(int transaction, const QString &signal, const QString &arguments)
{
    m_peer.emitSignal(path(transaction), TransactionInterface, signal, arguments.toUtf8());
}
