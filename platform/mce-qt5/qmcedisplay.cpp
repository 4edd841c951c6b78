// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "qmcedisplay.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>

#include <optional>

namespace {

QString mceService()
{
    return QStringLiteral("com.nokia.mce");
}

// The state in a signal or an answer; none if the message is not valid.
std::optional<QMceDisplay::State> stateIn(const QDBusMessage &message)
{
    if (message.type() == QDBusMessage::ErrorMessage || message.signature() != QLatin1String("s")) {
        return {};
    }
    const QString status = message.arguments().constFirst().toString();
    if (status == QLatin1String("on")) {
        return QMceDisplay::DisplayOn;
    }
    if (status == QLatin1String("dimmed")) {
        return QMceDisplay::DisplayDim;
    }
    if (status == QLatin1String("off")) {
        return QMceDisplay::DisplayOff;
    }
    return {};
}

}

QMceDisplay::QMceDisplay(QObject *parent)
    : QObject(parent)
{
    QDBusConnection bus = QDBusConnection::systemBus();
    if (!bus.isConnected()) {
        return;
    }

    // Subscribing comes before asking, or a change in between would be missed.
    bus.connect(mceService(), QStringLiteral("/com/nokia/mce/signal"), QStringLiteral("com.nokia.mce.signal"),
                QStringLiteral("display_status_ind"), this, SLOT(handleStatusSignal(QDBusMessage)));
    const auto *watcher = new QDBusServiceWatcher(mceService(), bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &QMceDisplay::handleOwnerChanged);
    ask();
}

QMceDisplay::~QMceDisplay() = default;

QMceDisplay::State QMceDisplay::state() const
{
    return m_state;
}

void QMceDisplay::handleStatusSignal(const QDBusMessage &signal)
{
    const std::optional<State> state = stateIn(signal);
    if (state) {
        // An answer that is still under way may be older than this signal.
        m_query.reset();
        setState(*state);
    }
}

void QMceDisplay::handleOwnerChanged(const QString &, const QString &, const QString &newOwner)
{
    // An answer of the earlier owner no longer counts.
    m_query.reset();
    if (newOwner.isEmpty()) {
        setState(DisplayOn);
    } else {
        ask();
    }
}

void QMceDisplay::ask()
{
    QDBusMessage call = QDBusMessage::createMethodCall(mceService(), QStringLiteral("/com/nokia/mce/request"),
                                                       QStringLiteral("com.nokia.mce.request"),
                                                       QStringLiteral("get_display_status"));
    // Watching the display must not start MCE.
    call.setAutoStartService(false);
    m_query = std::make_unique<QDBusPendingCallWatcher>(QDBusConnection::systemBus().asyncCall(call));
    connect(m_query.get(), &QDBusPendingCallWatcher::finished, this, &QMceDisplay::handleAnswer);
}

void QMceDisplay::handleAnswer(QDBusPendingCallWatcher *query)
{
    const std::optional<State> state = stateIn(query->reply());
    if (state) {
        setState(*state);
    }
}

void QMceDisplay::setState(State state)
{
    if (m_state != state) {
        m_state = state;
        emit stateChanged();
    }
}
