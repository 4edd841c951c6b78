// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QList>
#include <QString>

#include <chrono>

/** The command line of the program. */
struct CommandLine
{
    enum Command { None, Install, Remove, Monitor };

    /** The limit that holds if none was given, in seconds. */
    static constexpr int UsualLimit = 25;

    Command command = None;
    /** The files or names, the bytes as they were given. */
    QList<QByteArray> subjects;
    /** The path of the launcher, the bytes as they were given; null if there is none. */
    QByteArray launcher;
    bool sdk = false;
    bool keepUserData = false;
    bool notify = false;
    bool noWait = false;
    bool json = false;
    bool quiet = false;
    bool help = false;
    bool version = false;
    /** The limit for everything together, 0 for no limit, negative if none was given. */
    int seconds = -1;
    /** The limit for a bus or service to answer, 0 for no limit. */
    int limit() const { return seconds < 0 ? UsualLimit : seconds; }
    /** The time that is left of a limit that is not 0. clock: began when the program started. */
    std::chrono::milliseconds timeLeft(QElapsedTimer clock) const;

    /** The reason why the program cannot do this, empty if it can. */
    QString error;
};

/** Reads the arguments of main(). An error is a translated text. */
CommandLine readCommandLine(int argc, char **argv);
