// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "report.h"

#include <QDBusPendingReply>
#include <QString>
#include <QStringList>

#include <optional>

/** A notification of the desktop: that an installation goes on, and in its place how it has ended. */
class DesktopNotification : public Report
{
public:
    /** timeout: the notification service has so many milliseconds to answer a call. */
    explicit DesktopNotification(int timeout);

    void showState(const Subject &subject, State state) override;
    void showResult(const Subject &subject, const Result &result) override;
    void showEnd(Outcome outcome, int status) override;

private:
    struct Content
    {
        QString icon;
        QString title;
        QString body;
        /** In milliseconds, 0 for never, negative for the time of the notification service. */
        int expiry;
    };

    QDBusPendingReply<uint> publish(const Content &content) const;
    bool isSilent() const;
    uint number() const;
    void close() const;

    const int m_timeout;
    // The last call of "Notify".
    std::optional<QDBusPendingReply<uint>> m_shown;
    int m_position = 0;
    QStringList m_installed;
    QStringList m_others;
};
