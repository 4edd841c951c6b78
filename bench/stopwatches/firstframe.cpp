// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// Time from a request to the first frame of its dialog, in microseconds:
// PROGRAM cold|warm ROUNDS FILE SERVICE COMMAND [SERVICE COMMAND]...
// cold: the first request of a fresh process; warm: later requests.
//
// When a frame is on screen is told by the scene graph's own log, which the
// caller has to switch on. The display going off takes each dialog away.

#include "requests.h"
#include "serviceprocess.h"
#include "stopwatch.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>

#include <memory>
#include <vector>

namespace {

struct Subject
{
    Subject(const QString &service, const QString &command)
        : process(service, command.split(QLatin1Char(' ')))
        , requests(service, QStringLiteral("installFinished"))
    {
    }

    ServiceProcess process;
    Requests requests;
};

void turnDisplay(const QString &state)
{
    QDBusMessage call =
            QDBusMessage::createMethodCall(QStringLiteral("com.nokia.mce"), QStringLiteral("/com/nokia/mce/request"),
                                           QStringLiteral("com.nokia.mce.request"), QStringLiteral("TurnDisplay"));
    if (QDBusConnection::systemBus().call(call << state).type() != QDBusMessage::ReplyMessage) {
        fail(QStringLiteral("the display cannot be turned ") + state);
    }
}

void start(Subject *subject)
{
    subject->process.start();
    subject->process.awaitIdle();
}

double timeToFirstFrame(Subject *subject, const QString &file)
{
    subject->process.forgetLines();
    const double asked = subject->requests.ask(file);
    const double shown = subject->process.awaitLine("Frame rendered");
    turnDisplay(QStringLiteral("off"));
    subject->requests.awaitOutcome();
    turnDisplay(QStringLiteral("on"));
    subject->process.awaitIdle();
    return shown - asked;
}

}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    const bool cold = arguments.takeFirst() == QLatin1String("cold");
    const int rounds = arguments.takeFirst().toInt();
    const QString file = arguments.takeFirst();

    std::vector<std::unique_ptr<Subject>> subjects;
    for (int i = 0; i + 1 < arguments.size(); i += 2) {
        subjects.push_back(std::make_unique<Subject>(arguments.at(i), arguments.at(i + 1)));
        if (!cold) {
            start(subjects.back().get());
            timeToFirstFrame(subjects.back().get(), file);
        }
    }
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < subjects.size(); ++i) {
            if (cold) {
                start(subjects[i].get());
            }
            print(static_cast<int>(i), timeToFirstFrame(subjects[i].get(), file));
            if (cold) {
                subjects[i]->process.stop();
            }
        }
    }
    return 0;
}
