// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "service.h"

#include "busnames.h"

#include <QDBusConnectionInterface>
#include <QDBusServiceWatcher>

#include <limits>

using namespace BusNames::InstallationHandler;

Service::Service(const QDBusConnection &bus, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
{
}

void Service::listen()
{
    for (const char *name : {"needConfirm", "installFinished", "removalFinished"}) {
        m_bus.connect(BusNames::InstallationHandler::Service, Path, Interface, QLatin1String(name), this,
                      SLOT(handleSignal(QDBusMessage)));
    }
    // QtDBus makes this signal itself.
    m_bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                  QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                  SIGNAL(busLost()));
    const auto *watcher = new QDBusServiceWatcher(BusNames::InstallationHandler::Service, m_bus,
                                                  QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &oldOwner, const QString &owner) {
                emit ownerChanged(oldOwner, owner);
            });
    m_wasRunning = isRunning();
}

QDBusPendingCall Service::call(const QString &method, const QVariantList &arguments)
{
    QDBusMessage message =
            QDBusMessage::createMethodCall(BusNames::InstallationHandler::Service, Path, Interface, method);
    message.setArguments(arguments);
    return m_bus.asyncCall(message, std::numeric_limits<int>::max());
}

bool Service::isRunning() const
{
    return m_bus.interface()->isServiceRegistered(BusNames::InstallationHandler::Service);
}

void Service::handleSignal(const QDBusMessage &message)
{
    const QVariantList values = message.arguments();
    if (message.member() == QLatin1String("needConfirm")) {
        emit needConfirm();
    } else if (message.signature() != QLatin1String("bs")) {
        emit nonsense();
    } else if (message.member() == QLatin1String("installFinished")) {
        emit installFinished(values.at(0).toBool(), values.at(1).toString());
    } else {
        emit removalFinished(values.at(0).toBool(), values.at(1).toString());
    }
}
