// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QStringList>

#include <sys/types.h>

/** One run of a program that takes a name on the session bus; at most one at a time for each object. */
class ServiceProcess : public QObject
{
    Q_OBJECT

public:
    /** command: the program's absolute path and its arguments. */
    ServiceProcess(const QString &service, const QStringList &command);
    ~ServiceProcess() override;

    QString service() const;

    /** Starts the program and returns when its name is on the bus: the microseconds that this took. */
    double start();

    /** Returns when the program's event loop runs. */
    void awaitIdle() const;

    /** Waits until the program writes a line with this text to its standard error; returns when that was. */
    double awaitLine(const char *text);

    /** Forgets the lines that it has written so far. */
    void forgetLines();

    /** Ends the program and waits until its name has gone. */
    void stop();

private:
    bool readMore(int timeout);

    QString m_service;
    QStringList m_command;
    QDBusServiceWatcher m_watcher;
    pid_t m_pid = 0;
    int m_errorPipe = -1;
    bool m_named = false;
    double m_namedAt = 0;
    QByteArray m_unread;
};
