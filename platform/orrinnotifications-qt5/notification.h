// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>
#include <QString>

/**
 * A notification to the user. Its title is the operating system's name, and its picture the
 * standard icon "dialog-warning".
 *
 * The object may be destroyed after publish(), because the notification then belongs to
 * the desktop's notification service.
 */
class Notification : public QObject
{
    Q_OBJECT

public:
    /** The values are those of the desktop's notification service. */
    enum Urgency {
        Low = 0,
        Normal = 1,
        Critical = 2,
    };

    /** Creates an empty notification of normal urgency that is not transient. */
    explicit Notification(QObject *parent = nullptr);

    void setUrgency(Urgency urgency);

    /** A transient notification isn't kept once it has been shown. */
    void setIsTransient(bool isTransient);

    /** An icon's name in the icon theme, or its path. */
    void setAppIcon(const QString &appIcon);

    QString body() const;
    void setBody(const QString &body);

    /**
     * Sends the notification to org.freedesktop.Notifications on the session bus. It takes
     * the place of the one that this process has published before, if that is still shown.
     *
     * Returns at once and never waits for that service. Without the service or the bus
     * the notification is lost, and nothing reports that.
     */
    void publish();

private:
    Urgency m_urgency = Normal;
    bool m_isTransient = false;
    QString m_appIcon;
    QString m_body;
};
