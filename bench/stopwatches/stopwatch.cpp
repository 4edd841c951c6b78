// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "stopwatch.h"

#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstdlib>

double now()
{
    using namespace std::chrono;
    return duration<double, std::micro>(steady_clock::now().time_since_epoch()).count();
}

void measureInTurn(int rounds, const std::vector<std::function<double()>> &functions)
{
    const size_t count = functions.size();
    std::vector<std::vector<double>> results(static_cast<size_t>(rounds), std::vector<double>(count));
    bool forward = true;
    for (std::vector<double> &round : results) {
        for (size_t i = 0; i < count; ++i) {
            const size_t next = forward ? i : count - 1 - i;
            round[next] = functions[next]();
        }
        forward = !forward;
    }
    // Only now: a reader of the output would take its share of the processors.
    for (const std::vector<double> &round : results) {
        for (const double result : round) {
            std::printf("%.2f ", result);
        }
        std::printf("\n");
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
