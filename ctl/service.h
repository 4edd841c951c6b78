// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QObject>
#include <QString>
#include <QVariantList>

/** The installation handler on the session bus. */
class Service : public QObject
{
    Q_OBJECT

public:
    explicit Service(const QDBusConnection &bus, QObject *parent = nullptr);

    /** Begins to receive the signals of the service. */
    void listen();

    /** Whether the service was on the bus when it was first listened to. */
    bool wasRunning() const { return m_wasRunning; }

    /** Calls a method. The bus starts the service if necessary. The call has no time limit. */
    QDBusPendingCall call(const QString &method, const QVariantList &arguments);

    /**
     * Whether the service may be on the bus now, which a bus that does not answer leaves open. Without having listened
     * this waits for the bus's answer.
     */
    bool mayRun() const;

    /** Asks the bus, only for the sake of its answer. */
    QDBusPendingCall askBus() const;

Q_SIGNALS:
    /** All signals after this one are received. */
    void listening();
    /** The service has sent one of its signals, with any values. One of the next signals follows, which tells them. */
    void received(const QDBusMessage &signal);
    void needConfirm();
    void installFinished(bool success, const QString &errorString);
    void removalFinished(bool success, const QString &errorString);
    /** A signal has come whose values are not those of the bus interface. */
    void nonsense();
    /** The name has another owner, or none if `owner` is empty. */
    void ownerChanged(const QString &oldOwner, const QString &owner);
    void busLost();

private Q_SLOTS:
    void handleSignal(const QDBusMessage &message);

private:
    void watchOwner();
    void handleOwner(const QString &owner);

    QDBusConnection m_bus;
    // The connection that owns the service's name, as the last change or the bus's answer has told.
    QString m_owner;
    bool m_isListening = false;
    bool m_hasChanged = false;
    bool m_wasRunning = false;
};
