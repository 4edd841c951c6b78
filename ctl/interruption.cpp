// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "interruption.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

namespace {

// The signal handler writes the number of the signal to the second end.
std::array<int, 2> pipeEnds{};

int makePipe()
{
    return pipe(pipeEnds.data()) == 0 ? pipeEnds[0] : -1;
}

void handleSignal(int number)
{
    const int error = errno;
    const auto byte = static_cast<unsigned char>(number);
    // A full pipe holds a signal already.
    [[maybe_unused]] const ssize_t written = write(pipeEnds[1], &byte, 1);
    errno = error;
}

void catchSignal(int number)
{
    struct sigaction action = {};
    sigaction(number, nullptr, &action);
    // nohup has a program ignore SIGHUP, and a shell has those in the background ignore SIGINT.
    if (action.sa_handler != SIG_IGN) {
        action.sa_handler = handleSignal;
        action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
        sigaction(number, &action, nullptr);
    }
}

}

Interruption::Interruption(QObject *parent)
    : QObject(parent)
    , m_notifier(makePipe(), QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, &Interruption::readSignal);
    for (const int number : {SIGHUP, SIGINT, SIGTERM}) {
        catchSignal(number);
    }
}

void Interruption::readSignal()
{
    unsigned char number = 0;
    if (read(pipeEnds[0], &number, 1) == 1) {
        m_signal = number;
        emit received(number);
    }
}
