// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

/** Sends installation requests to one service on the session bus and hears of their outcome. */
class Requests : public QObject
{
    Q_OBJECT

public:
    explicit Requests(const QString &service);

    /** Asks for a silent installation and waits for its outcome: the microseconds that this took. */
    double install(const QStringList &files);

    /** Asks for an installation that somebody has to confirm, and waits for nothing. Returns when that was. */
    double ask(const QString &file);

    /** Waits for the outcome of ask(). */
    void awaitOutcome();

private Q_SLOTS:
    void finished();

private:
    void send(const QStringList &files, bool sdkMode);

    QString m_service;
    bool m_pending = false;
    double m_finishedAt = 0;
};
