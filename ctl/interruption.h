// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>
#include <QSocketNotifier>

/** The signals of the system that end a program: SIGHUP, SIGINT, SIGTERM. One object at a time. */
class Interruption : public QObject
{
    Q_OBJECT

public:
    /** From now on these signals do not end the process, but a second one does. Those that were ignored stay so. */
    explicit Interruption(QObject *parent = nullptr);

    /** The number of the last signal that was received, 0 if there was none. */
    int signal() const { return m_signal; }

Q_SIGNALS:
    /** signal: its number. */
    void received(int signal);

private:
    void readSignal();

    QSocketNotifier m_notifier;
    int m_signal = 0;
};
