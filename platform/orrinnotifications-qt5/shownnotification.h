// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>
#include <QString>
#include <QVariantMap>

#include <memory>

class QDBusPendingCallWatcher;

/**
 * The notification of this process that the desktop's notification service shows. There is
 * at most one, because the next one takes its place.
 *
 * The service numbers its notifications. The number is forgotten when the notification is
 * closed, since some services ignore one that would replace a closed one, and when the
 * service's name has another owner, which may give the same number to another program.
 */
class ShownNotification : public QObject
{
    Q_OBJECT

public:
    explicit ShownNotification(QObject *parent);
    ~ShownNotification() override;

    /**
     * Sends a notification to org.freedesktop.Notifications on the session bus. It takes the
     * place of the one before if that is still shown and its number has arrived.
     *
     * Returns at once and never waits for that service.
     */
    void show(const QString &appIcon, const QString &title, const QString &body, const QVariantMap &hints);

private Q_SLOTS:
    void handleClosed(uint id);

private:
    void handleReply();
    void handleOwnerChanged(const QString &service, const QString &oldOwner);

    uint m_id = 0; // 0 while none is known to be shown
    std::unique_ptr<QDBusPendingCallWatcher> m_reply;
};
