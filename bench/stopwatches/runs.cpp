// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// Wall time from the start of a program to its end, in microseconds: PROGRAM ROUNDS COMMAND [ARGUMENT]... [--
// COMMAND...]...

#include "stopwatch.h"

#include <QByteArrayList>
#include <QFile>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Command = std::vector<char *>;

// The commands, each with the null pointer that ends a list of arguments.
std::vector<Command> split(char **begin, char **end)
{
    std::vector<Command> commands(1);
    for (char **word = begin; word != end; ++word) {
        if (qstrcmp(*word, "--") == 0) {
            commands.emplace_back();
        } else {
            commands.back().push_back(*word);
        }
    }
    for (Command &command : commands) {
        command.push_back(nullptr);
    }
    return commands;
}

double timeToEnd(const Command &command)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t pid = 0;
    int status = 1;
    const double started = now();
    if (posix_spawn(&pid, command.front(), &actions, nullptr, command.data(), environ) == 0) {
        waitpid(pid, &status, 0);
    }
    const double taken = now() - started;
    posix_spawn_file_actions_destroy(&actions);
    if (status != 0) {
        fail(QFile::decodeName(command.front()));
    }
    return taken;
}

}

int main(int argc, char **argv)
{
    if (argc < 3) {
        fail(QStringLiteral("a command is missing"));
    }
    std::vector<std::function<double()>> runs;
    for (const Command &command : split(argv + 2, argv + argc)) {
        runs.emplace_back([command] { return timeToEnd(command); });
    }
    measureInTurn(QByteArray(argv[1]).toInt(), runs);
    return 0;
}
