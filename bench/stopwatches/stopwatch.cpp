// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "stopwatch.h"

#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

double processorTime()
{
    timespec time;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return 1e6 * static_cast<double>(time.tv_sec) + 1e-3 * static_cast<double>(time.tv_nsec);
}

}

double now()
{
    using namespace std::chrono;
    return duration<double, std::micro>(steady_clock::now().time_since_epoch()).count();
}

void print(int program, double value)
{
    std::printf("%d %.1f\n", program, value);
    std::fflush(stdout);
}

void printProcessorTimes(int rounds, const std::function<void()> (&functions)[2])
{
    for (int round = 0; round < rounds; ++round) {
        for (int i = 0; i < 2; ++i) {
            const double begun = processorTime();
            functions[i]();
            print(i, processorTime() - begun);
        }
    }
}

void waitUntil(const std::function<bool()> &done, const QString &what)
{
    QEventLoop loop;
    QTimer deadline;
    deadline.setSingleShot(true);
    deadline.start(std::chrono::seconds(60));
    while (!done()) {
        if (!deadline.isActive()) {
            fail(QStringLiteral("waited in vain for ") + what);
        }
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    }
}

void fail(const QString &what)
{
    std::fprintf(stderr, "%s\n", qPrintable(what));
    std::exit(1);
}
