// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "serviceprocess.h"

#include "stopwatch.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <vector>

namespace {

constexpr int LineTimeout = 60000; // milliseconds

// The standard error of the program goes to the pipe, whose other end is returned.
pid_t spawn(const QStringList &command, int *errorPipe)
{
    QList<QByteArray> words;
    std::vector<char *> arguments;
    for (const QString &word : command) {
        words.append(QFile::encodeName(word));
        arguments.push_back(words.last().data());
    }
    arguments.push_back(nullptr);

    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        fail(QStringLiteral("no pipe"));
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
    pid_t pid = 0;
    const int error = posix_spawn(&pid, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    *errorPipe = ends[0];
    if (error != 0) {
        fail(QStringLiteral("cannot start ") + command.constFirst());
    }
    return pid;
}

}

ServiceProcess::ServiceProcess(const QString &service, const QStringList &command)
    : m_service(service)
    , m_command(command)
    , m_watcher(service, QDBusConnection::sessionBus())
{
    connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this, [this]() {
        m_namedAt = now();
        m_named = true;
    });
    connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this]() { m_named = false; });
}

ServiceProcess::~ServiceProcess()
{
    stop();
}

QString ServiceProcess::service() const
{
    return m_service;
}

double ServiceProcess::start()
{
    const double started = now();
    m_pid = spawn(m_command, &m_errorPipe);
    waitUntil([this]() { return m_named; }, m_service);
    return m_namedAt - started;
}

void ServiceProcess::awaitIdle() const
{
    // Answered by the event loop, after everything that was queued before.
    const QDBusMessage call = QDBusMessage::createMethodCall(
            m_service, QStringLiteral("/org/velmoraos/installationhandler"),
            QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"));
    if (QDBusConnection::sessionBus().call(call).type() != QDBusMessage::ReplyMessage) {
        fail(m_service + QStringLiteral(" does not answer"));
    }
}

double ServiceProcess::awaitLine(const char *text)
{
    for (;;) {
        for (int end = m_unread.indexOf('\n'); end >= 0; end = m_unread.indexOf('\n')) {
            const bool found = m_unread.left(end).contains(text);
            m_unread.remove(0, end + 1);
            if (found) {
                return now();
            }
        }
        if (!readMore(LineTimeout)) {
            fail(m_service + QStringLiteral(" never wrote: ") + QString::fromLatin1(text));
        }
    }
}

void ServiceProcess::forgetLines()
{
    while (readMore(0)) {
    }
    m_unread.clear();
}

bool ServiceProcess::readMore(int timeout)
{
    pollfd readable{m_errorPipe, POLLIN, 0};
    char buffer[4096];
    const ssize_t count = poll(&readable, 1, timeout) == 1 ? read(m_errorPipe, buffer, sizeof buffer) : 0;
    m_unread.append(buffer, static_cast<int>(count > 0 ? count : 0));
    return count > 0;
}

void ServiceProcess::stop()
{
    if (m_pid == 0) {
        return;
    }
    kill(m_pid, SIGTERM);
    waitpid(m_pid, nullptr, 0);
    m_pid = 0;
    close(m_errorPipe);
    m_unread.clear();
    waitUntil([this]() { return !m_named; }, QStringLiteral("the end of ") + m_service);
}
