// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// Wall time from the start of a program to its name on the session bus, in microseconds:
// PROGRAM ROUNDS NAME PATH [NAME PATH]...

#include "stopwatch.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QFile>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace {

pid_t spawn(const QString &program)
{
    QByteArray path = QFile::encodeName(program);
    char *arguments[] = {path.data(), nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const int output : {STDOUT_FILENO, STDERR_FILENO}) {
        posix_spawn_file_actions_addopen(&actions, output, "/dev/null", O_WRONLY, 0);
    }
    pid_t pid = 0;
    const int error = posix_spawn(&pid, path.constData(), &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        fail(QStringLiteral("cannot start ") + program);
    }
    return pid;
}

// One start, and the end that makes place for the next one.
double timeToName(const QString &name, const QString &program)
{
    double namedAt = 0;
    QDBusServiceWatcher watcher(name, QDBusConnection::sessionBus());
    QObject::connect(&watcher, &QDBusServiceWatcher::serviceRegistered, [&] { namedAt = now(); });
    QObject::connect(&watcher, &QDBusServiceWatcher::serviceUnregistered, [&] { namedAt = 0; });

    const double started = now();
    const pid_t pid = spawn(program);
    waitUntil([&] { return namedAt > 0; }, name);
    const double taken = namedAt - started;

    kill(pid, SIGTERM);
    waitpid(pid, nullptr, 0);
    waitUntil([&] { return namedAt == 0; }, QStringLiteral("the end of ") + name);
    return taken;
}

}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    std::vector<std::function<double()>> starts;
    for (int i = 2; i + 1 < arguments.size(); i += 2) {
        starts.emplace_back(
                [name = arguments.at(i), program = arguments.at(i + 1)] { return timeToName(name, program); });
    }
    measureInTurn(arguments.value(1).toInt(), starts);
    return 0;
}
