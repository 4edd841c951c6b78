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

    /** Receives the signals from now on. Blocks until the bus has told who owns the service's name. */
    void listen();

    /** Whether the service was on the bus when listen() was called. */
    bool wasRunning() const { return m_wasRunning; }

    /** Calls a method. The bus starts the service if necessary. The call has no time limit. */
    QDBusPendingCall call(const QString &method, const QVariantList &arguments);

    /** Whether the service is on the bus now. Blocks until the bus has answered. */
    bool isRunning() const;

Q_SIGNALS:
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
    QDBusConnection m_bus;
    bool m_wasRunning = false;
};
