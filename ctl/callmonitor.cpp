// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "callmonitor.h"

#include "busnames.h"

#include <QStringList>

namespace {

QString connectionName()
{
    return QStringLiteral("monitor");
}

}

CallMonitor::CallMonitor(QObject *parent)
    : QDBusVirtualObject(parent)
{
}

CallMonitor::~CallMonitor()
{
    QDBusConnection::disconnectFromBus(connectionName());
}

// QtDBus would answer a call to an object that does not exist, although it is somebody else's call. So this object
// stands for all of them.
void CallMonitor::start()
{
    QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName());
    bus.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);

    QDBusMessage request = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus.Monitoring"), QStringLiteral("BecomeMonitor"));
    request << QStringList(
            QStringLiteral("type='method_call',interface='%1'").arg(BusNames::InstallationHandler::Interface))
            << 0U;
    bus.call(request);
}

QString CallMonitor::introspect(const QString &) const
{
    return QString();
}

bool CallMonitor::handleMessage(const QDBusMessage &message, const QDBusConnection &)
{
    if (message.service() != QDBusConnection::sessionBus().baseService()) {
        emit called(message);
    }
    return true;
}
