// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "callmonitor.h"

#include "bus.h"
#include "busnames.h"

#include <QDBusPendingCallWatcher>
#include <QStringList>

#include <limits>

CallMonitor::CallMonitor(const QDBusConnection &bus, QObject *parent)
    : QDBusVirtualObject(parent)
    , m_bus(bus)
{
}

// QtDBus would answer a call to an object that does not exist, although it is somebody else's call. So this object
// stands for all of them.
void CallMonitor::start()
{
    m_bus.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);

    QDBusMessage request = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus.Monitoring"), QStringLiteral("BecomeMonitor"));
    request << QStringList(QStringLiteral("type='method_call',path='%1'").arg(BusNames::InstallationHandler::Path))
            << 0U;
    const auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(request, std::numeric_limits<int>::max()), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, &CallMonitor::started);
}

QString CallMonitor::introspect(const QString &) const
{
    return QString();
}

bool CallMonitor::handleMessage(const QDBusMessage &message, const QDBusConnection &)
{
    // A call need not name the interface.
    const QString interface = message.interface();
    const bool isRequest = interface.isEmpty() || interface == BusNames::InstallationHandler::Interface;
    if (isRequest && message.service() != Bus::connection().baseService()) {
        emit called(message);
    }
    return true;
}
