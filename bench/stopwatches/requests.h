// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>

/** Sends requests of one kind to one service on the session bus and hears of their outcome. */
class Requests : public QObject
{
    Q_OBJECT

public:
    /** outcome: the signal that ends them, "installFinished" or "removalFinished". */
    Requests(const QString &service, const QString &outcome);

    /** Asks for a silent installation and waits for its outcome: the microseconds that this took. */
    double install(const QStringList &files);

    /** Asks for a removal and waits for its success: the microseconds that this took. */
    double remove(const QString &package);

    /** Asks for an installation that somebody has to confirm, and waits for nothing. Returns when that was. */
    double ask(const QString &file);

    /** Waits for the outcome of ask(). */
    void awaitOutcome();

private Q_SLOTS:
    void finished(bool success, const QString &errorString);

private:
    void requestInstallation(const QStringList &files, bool sdkMode);
    void send(const QString &method, const QVariantList &arguments);

    QString m_service;
    QString m_outcome;
    bool m_success = false;
    QString m_error;
    bool m_pending = false;
    double m_finishedAt = 0;
};
