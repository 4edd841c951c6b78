// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>
#include <QString>
#include <QVariantList>

/** Sends requests of one kind to one service on the session bus and waits for their outcome. */
class Requests : public QObject
{
    Q_OBJECT

public:
    /** outcome: the signal that ends them, "installFinished" or "removalFinished". */
    Requests(const QString &service, const QString &method, const QVariantList &arguments, const QString &outcome);

    /** Sends one and waits for its success: the microseconds that this took. */
    double send();

private slots:
    void finished(bool success, const QString &errorString);

private:
    QString m_service;
    QString m_method;
    QVariantList m_arguments;
    double m_finishedAt = 0;
};
