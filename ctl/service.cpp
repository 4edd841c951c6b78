// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "service.h"

#include "bus.h"
#include "busnames.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusReply>
#include <QDBusServiceWatcher>

#include <limits>

namespace Names = BusNames::InstallationHandler;

namespace {

// In milliseconds. By default QtDBus waits for 25 seconds.
constexpr int QuestionTimeout = 1000;

QDBusMessage ask(const QString &method)
{
    QDBusMessage question = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                                           QStringLiteral("/org/freedesktop/DBus"),
                                                           QStringLiteral("org.freedesktop.DBus"), method);
    question << Names::Service;
    return question;
}

}

Service::Service(const QDBusConnection &bus, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
{
}

// The signals of everybody come, and handleSignal() looks for the sender. For a certain sender QtDBus would ask the bus
// who that is, and wait for the answer.
void Service::listen()
{
    for (const char *name : {"needConfirm", "installFinished", "removalFinished"}) {
        m_bus.connect(QString(), Names::Path, Names::Interface, QLatin1String(name), this,
                      SLOT(handleSignal(QDBusMessage)));
    }
    // QtDBus makes this signal itself.
    m_bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                  QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                  SIGNAL(busLost()));
    watchOwner();
}

void Service::watchOwner()
{
    const auto *watcher =
            new QDBusServiceWatcher(Names::Service, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &oldOwner, const QString &owner) {
                m_owner = owner;
                m_hasChanged = true;
                emit ownerChanged(oldOwner, owner);
            });
    const auto *answer = new QDBusPendingCallWatcher(m_bus.asyncCall(ask(QStringLiteral("GetNameOwner"))), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *answered) {
        const QDBusPendingReply<QString> reply = *answered;
        if (Bus::hasAnswered(reply.error())) {
            handleOwner(reply.isError() ? QString() : reply.value());
        } else if (reply.error().type() == QDBusError::Disconnected) {
            // The bus may have gone before listen().
            emit busLost();
        }
    });
}

void Service::handleOwner(const QString &owner)
{
    // QtDBus may deliver a later signal first.
    if (!m_hasChanged) {
        m_owner = owner;
    }
    m_wasRunning = !owner.isEmpty();
    m_isListening = true;
    emit listening();
}

QDBusPendingCall Service::call(const QString &method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(Names::Service, Names::Path, Names::Interface, method);
    message.setArguments(arguments);
    return m_bus.asyncCall(message, std::numeric_limits<int>::max());
}

bool Service::mayRun() const
{
    if (m_isListening) {
        return !m_owner.isEmpty();
    }
    const QDBusReply<bool> answer = m_bus.call(ask(QStringLiteral("NameHasOwner")), QDBus::Block, QuestionTimeout);
    return !answer.isValid() || answer.value();
}

QDBusPendingCall Service::askBus() const
{
    return m_bus.asyncCall(ask(QStringLiteral("NameHasOwner")));
}

void Service::handleSignal(const QDBusMessage &message)
{
    if (message.service() != m_owner) {
        return;
    }
    emit received(message);
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
