// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "packagekitpeer.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QEvent>

namespace {

constexpr int transactions = 20;

const QString Service = QStringLiteral("org.freedesktop.PackageKit");
const QString TransactionInterface = QStringLiteral("org.freedesktop.PackageKit.Transaction");

// No two daemons of a test program give two transactions the same path.
int nextNumber()
{
    static int number = 0;
    return ++number;
}

QString quoted(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char('"'), QLatin1String("\\\""));
    return QLatin1Char('"') + text.replace(QLatin1Char('\n'), QLatin1String("\\n")) + QLatin1Char('"');
}

}

PackageKitPeer::PackageKitPeer(Journal *journal)
    : m_number(nextNumber())
    , m_peer(qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS"), {Service}, journal)
{
    QList<PeerAnswer> creations;
    for (int transaction = 0; transaction < transactions; ++transaction) {
        creations.append(PeerAnswer::values(QStringLiteral("(objectpath '%1',)").arg(path(transaction)).toUtf8()));
    }
    m_peer.answer(QStringLiteral("CreateTransaction"), creations);
    // How the library prepares a transaction is its own matter.
    m_peer.overlook(QStringLiteral("GetAll"));
    m_peer.answer(QStringLiteral("GetAll"), PeerAnswer::values("(@a{sv} {},)"));
    m_peer.overlook(QStringLiteral("SetHints"));
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
    tell(transaction, QStringLiteral("Package"),
         QStringLiteral("(uint32 %1, %2, %3)").arg(info).arg(quoted(id), quoted(summary)));
}

void PackageKitPeer::tellProgress(int transaction, const QString &id, uint percentage)
{
    tell(transaction, QStringLiteral("ItemProgress"),
         QStringLiteral("(%1, uint32 %2, uint32 %3)")
                 .arg(quoted(id))
                 .arg(PackageKit::Transaction::StatusRemove)
                 .arg(percentage));
}

void PackageKitPeer::tellError(int transaction, PackageKit::Transaction::Error error, const QString &details)
{
    tell(transaction, QStringLiteral("ErrorCode"), QStringLiteral("(uint32 %1, %2)").arg(error).arg(quoted(details)));
}

void PackageKitPeer::tellEnd(int transaction, PackageKit::Transaction::Exit exit, uint runtime)
{
    tell(transaction, QStringLiteral("Finished"), QStringLiteral("(uint32 %1, uint32 %2)").arg(exit).arg(runtime));
}

QString PackageKitPeer::creation()
{
    return Service + QLatin1String(" /org/freedesktop/PackageKit org.freedesktop.PackageKit.CreateTransaction()");
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
    const QDBusMessage ping = QDBusMessage::createMethodCall(
            Service, QStringLiteral("/"), QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"));
    return QDBusConnection::systemBus().call(ping, QDBus::Block, 5000).type() == QDBusMessage::ReplyMessage;
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
    return QStringLiteral("/%1_%2").arg(m_number).arg(transaction);
}

void PackageKitPeer::tell(int transaction, const QString &signal, const QString &arguments)
{
    m_peer.emitSignal(path(transaction), TransactionInterface, signal, arguments.toUtf8());
}
